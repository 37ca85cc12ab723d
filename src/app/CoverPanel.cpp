#include "app/CoverPanel.h"

#include "media/widgets/NotchWing.h"
#include "platform/linux/X11WindowHints.h"

#include <QGuiApplication>
#include <QPropertyAnimation>
#include <QWindow>

namespace {

QRect pixels(const QRectF& frame)
{
    return QRect(qRound(frame.x()), qRound(frame.y()), std::max(1, qRound(frame.width())),
                 std::max(1, qRound(frame.height())));
}

} // namespace

CoverPanel::CoverPanel(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint |
                          Qt::WindowTransparentForInput),
      m_animation(new QPropertyAnimation(this, "geometry", this)),
      m_x11(QGuiApplication::platformName() == QLatin1String("xcb"))
{
    setWindowTitle(QString::fromLatin1(title));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    m_animation->setEasingCurve(QEasingCurve::OutCubic);
}

CoverPanel::~CoverPanel() = default;

void CoverPanel::setWing(const QImage& image, const QString& title, const QString& subtitle, double height)
{
    delete m_wing;
    m_wing = new NotchWing(image, title, subtitle, height, this);
    placeWing();
    m_wing->show();
}

void CoverPanel::placeWing()
{
    // The wing keeps its width and hangs at the window's right edge, so a growing window reveals it
    // from the notch outwards.
    if (m_wing)
        m_wing->move(width() - m_wing->width(), 0);
}

void CoverPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeWing();
}

void CoverPanel::slideIn(const QRectF& from, const QRectF& to, double seconds)
{
    m_animation->stop();
    disconnect(m_animation, &QPropertyAnimation::finished, nullptr, nullptr);
    setGeometry(pixels(from));
    m_frame = from;
    if (!isVisible()) {
        show();
        if (m_x11)
            X11WindowHints::showOnAllDesktops(windowHandle());
    }
    raise();
    moveTo(to, seconds);
}

void CoverPanel::slideOut(const QRectF& to, double seconds, std::function<void()> done)
{
    m_animation->stop();
    disconnect(m_animation, &QPropertyAnimation::finished, nullptr, nullptr);
    if (seconds <= 0) {
        moveTo(to, 0);
        done();
        return;
    }
    connect(m_animation, &QPropertyAnimation::finished, this, [done = std::move(done)] { done(); });
    moveTo(to, seconds);
}

void CoverPanel::moveTo(const QRectF& to, double seconds)
{
    m_frame = to;
    if (seconds <= 0) {
        setGeometry(pixels(to));
        return;
    }
    m_animation->setDuration(int(seconds * 1000));
    m_animation->setStartValue(geometry());
    m_animation->setEndValue(pixels(to));
    m_animation->start();
}

void CoverPanel::orderOut()
{
    m_animation->stop();
    disconnect(m_animation, &QPropertyAnimation::finished, nullptr, nullptr);
    hide();
}
