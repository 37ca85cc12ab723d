#pragma once

#include "media/WingSurface.h"

#include <QWidget>

class NotchWing;
class QPropertyAnimation;

// The window that holds the wing: frameless, above everything, on every desktop, out of the task
// bar, never focused and transparent for the pointer, so clicks go to whatever is under it.
class CoverPanel final : public QWidget, public WingSurface
{
    Q_OBJECT
public:
    static constexpr const char* title = "Brenlow Einblendung";

    explicit CoverPanel(QWidget* parent = nullptr);
    ~CoverPanel() override;

    void setWing(const QImage& image, const QString& title, const QString& subtitle, double height) override;
    void slideIn(const QRectF& from, const QRectF& to, double seconds) override;
    void slideOut(const QRectF& to, double seconds, std::function<void()> done) override;
    void orderOut() override;
    bool isShown() const override { return isVisible(); }
    QRectF frame() const override { return m_frame; }
    NotchWing* wing() const { return m_wing; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void moveTo(const QRectF& to, double seconds);
    void placeWing();

    NotchWing* m_wing = nullptr;
    QPropertyAnimation* m_animation;
    QRectF m_frame;
    bool m_x11 = false;
};
