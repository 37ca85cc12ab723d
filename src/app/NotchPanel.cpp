#include "app/NotchPanel.h"

#include "model/Model.h"
#include "panel/NotchGeometry.h"
#include "panel/widgets/PanelTheme.h"
#include "platform/linux/X11WindowHints.h"

#if __has_include("panel/widgets/RootView.h")
#include "panel/widgets/RootView.h"
#define BRENLOW_HAS_ROOT_VIEW 1
#endif

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPropertyAnimation>
#include <QRadialGradient>
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
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Meta || key == Qt::Key_Alt
        || key == Qt::Key_AltGr || key == Qt::Key_Super_L || key == Qt::Key_Super_R || key == Qt::Key_CapsLock
        || key == Qt::Key_NumLock;
}

QPainterPath hangingShape(const QRectF& rect, double radius)
{
    // Square at the top edge where it meets the screen border, round below.
    radius = std::min({radius, rect.height() / 2, rect.width() / 2});
    QPainterPath path;
    path.moveTo(rect.topLeft());
    path.lineTo(rect.topRight());
    path.lineTo(rect.right(), rect.bottom() - radius);
    path.quadTo(rect.bottomRight(), QPointF(rect.right() - radius, rect.bottom()));
    path.lineTo(rect.left() + radius, rect.bottom());
    path.quadTo(rect.bottomLeft(), QPointF(rect.left(), rect.bottom() - radius));
    path.closeSubpath();
    return path;
}

} // namespace

NotchPanel::NotchPanel(Model& model, QWidget* parent)
    : QWidget(parent,
              Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus
                  | Qt::NoDropShadowWindowHint)
    , m_model(model)
    , m_x11(QGuiApplication::platformName() == QLatin1String("xcb"))
{
    setWindowTitle(QString::fromLatin1(title));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::StrongFocus);

#ifdef BRENLOW_HAS_ROOT_VIEW
    m_content = new RootView(model, this);
#endif

    m_animation = new QPropertyAnimation(this, "geometry", this);
    m_animation->setDuration(int(NotchGeometry::resizeDuration * 1000));
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);

    // The native window exists from here on, so its events can be watched before widgets see them.
    winId();
    windowHandle()->installEventFilter(this);

    // The fallback content repaints when the glow starts or ends.
    connect(&model, &Model::introActiveChanged, this, qOverload<>(&QWidget::update));
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
    m_animation->stop();
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
    if (m_content)
        m_content->setGeometry(rect());
}

void NotchPanel::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    if (m_content)
        return;
    // Without the root view: the black shape, and the glow around it while the welcome runs.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF body = rect();
    if (m_model.introActive()) {
        const QRectF notch((width() - m_model.notchWidth()) / 2, 0, m_model.notchWidth(), m_model.notchHeight());
        QRadialGradient glow(notch.center(), std::max(width(), height()));
        QColor accent = PanelTheme::accent();
        glow.setColorAt(0, accent);
        accent.setAlpha(0);
        glow.setColorAt(1, accent);
        painter.fillPath(hangingShape(rect(), PanelTheme::closedRadius + 8), glow);
        body = notch;
    }
    const bool open = m_model.expanded() && !m_model.introActive();
    painter.fillPath(hangingShape(body, open ? PanelTheme::panelRadius : PanelTheme::closedRadius),
                     PanelTheme::background());
}
