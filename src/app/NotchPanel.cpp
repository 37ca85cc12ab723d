#include "app/NotchPanel.h"

#include "platform/linux/X11WindowHints.h"
#include "shell/NotchGeometry.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPropertyAnimation>
#include <QWindow>

namespace {

// Qt on X11 reports Ctrl as Control and Super as Meta; the rules think in Command, Control, Option.
KeyModifiers rulesModifiers(Qt::KeyboardModifiers qt)
{
    KeyModifiers modifiers;
    if (qt & Qt::ShiftModifier)
        modifiers |= KeyModifier::Shift;
    if (qt & Qt::ControlModifier)
        modifiers |= KeyModifier::Command;
    if (qt & Qt::MetaModifier)
        modifiers |= KeyModifier::Control;
    if (qt & Qt::AltModifier)
        modifiers |= KeyModifier::Option;
    return modifiers;
}

bool isModifierKey(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Meta || key == Qt::Key_Alt ||
           key == Qt::Key_AltGr || key == Qt::Key_Super_L || key == Qt::Key_Super_R ||
           key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

} // namespace

NotchPanel::NotchPanel(QWidget* content, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint),
      m_x11(QGuiApplication::platformName() == QLatin1String("xcb"))
{
    setWindowTitle(QString::fromLatin1(title));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::StrongFocus);

    // The content decides what to show; the frame comes only from the panel rules.
    m_content = content;
    m_content->setParent(this);

    m_animation = new QPropertyAnimation(this, "geometry", this);
    m_animation->setDuration(int(NotchGeometry::resizeDuration * 1000));
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);

    // The native window exists from here on, so its events can be watched before widgets see them.
    winId();
    windowHandle()->installEventFilter(this);
}

NotchPanel::~NotchPanel() = default;

void NotchPanel::setFrame(const QRectF& frame, bool animate)
{
    m_frame = frame;
    const QRect target(qRound(frame.x()), qRound(frame.y()), qRound(frame.width()), qRound(frame.height()));
    m_animation->stop();
    if (!animate || geometry() == target) {
        setGeometry(target);
        return;
    }
    m_animation->setStartValue(geometry());
    m_animation->setEndValue(target);
    m_animation->start();
}

void NotchPanel::orderFront()
{
    if (!isVisible()) {
        show();
        if (m_x11)
            X11WindowHints::showOnAllDesktops(windowHandle());
    }
    if (m_x11)
        raise();
}

void NotchPanel::orderOut()
{
    // A frame animation cut short would leave the window at an old size for its next showing.
    if (m_animation->state() != QAbstractAnimation::Stopped) {
        m_animation->stop();
        setGeometry(m_animation->endValue().toRect());
    }
    hide();
}

void NotchPanel::makeKey()
{
    if (!isVisible())
        orderFront();
    if (!isKey() && m_x11) {
        const quint32 focused = X11WindowHints::focusedWindow();
        if (focused != quint32(winId()))
            m_previousFocus = focused;
    }
    setAcceptsFocus(true);
    windowHandle()->requestActivate();
}

void NotchPanel::resignKey()
{
    const bool wasKey = isKey();
    setAcceptsFocus(false);
    // Give the keyboard back to the window the user came from; Qt has no call for letting go.
    if (wasKey && m_x11 && m_previousFocus)
        X11WindowHints::focus(m_previousFocus);
    m_previousFocus = 0;
}

bool NotchPanel::isKey() const
{
    return windowHandle() && windowHandle()->isActive();
}

void NotchPanel::setAcceptsFocus(bool accepts)
{
    Qt::WindowFlags flags = windowFlags();
    if (flags.testFlag(Qt::WindowDoesNotAcceptFocus) == !accepts)
        return;
    flags.setFlag(Qt::WindowDoesNotAcceptFocus, !accepts);
    // Changing the QWidget's flags would recreate the native window; the QWindow's only update the
    // window manager hints.
    overrideWindowFlags(flags);
    windowHandle()->setFlags(flags);
}

bool NotchPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != windowHandle())
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Enter:
        Q_EMIT pointerEntered();
        break;
    case QEvent::MouseButtonPress:
        // Like a panel that can become key: a click hands it the keyboard.
        if (!isKey())
            makeKey();
        break;
    case QEvent::KeyPress:
        return handleKey(static_cast<QKeyEvent*>(event));
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool NotchPanel::handleKey(QKeyEvent* event)
{
    if (!keyHandler || isModifierKey(event->key()))
        return false;
    int code = 0x10000 + event->key();
    if (event->key() == Qt::Key_V)
        code = KeyCode::V;
    else if (event->key() == Qt::Key_Escape)
        code = KeyCode::Escape;
    return keyHandler(code, rulesModifiers(event->modifiers()));
}

void NotchPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_content->setGeometry(rect());
}
