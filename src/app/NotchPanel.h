#pragma once

#include "platform/KeyModifiers.h"
#include "shell/PanelWindow.h"

#include <QWidget>

#include <functional>

class QPropertyAnimation;

// The panel window: frameless, above everything, on every desktop, out of the task bar. Opened by
// hovering it never takes the keyboard; a click or an explicit opening gives it the keyboard so
// text fields and Escape work. Its frame comes only from the panel rules, never from its content.
class NotchPanel final : public QWidget, public PanelWindow
{
    Q_OBJECT
public:
    static constexpr const char* title = "Brenlow";

    // Takes `content` (the root view) as its only child.
    explicit NotchPanel(QWidget* content, QWidget* parent = nullptr);
    ~NotchPanel() override;

    QRectF frame() const override { return m_frame; }
    void setFrame(const QRectF& frame, bool animate) override;
    bool isShown() const override { return isVisible(); }
    void orderFront() override;
    void orderOut() override;
    void makeKey() override;
    void resignKey() override;
    bool isKey() const override;

    // The local keyboard monitor: sees every key-down of the panel before its widgets and answers
    // whether it was consumed.
    std::function<bool(int keyCode, KeyModifiers modifiers)> keyHandler;

Q_SIGNALS:
    // The pointer came onto the panel (a wake-up for a sleeping pointer poll).
    void pointerEntered();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setAcceptsFocus(bool accepts);
    bool handleKey(class QKeyEvent* event);

    QWidget* m_content = nullptr;
    QPropertyAnimation* m_animation = nullptr;
    QRectF m_frame;
    quint32 m_previousFocus = 0;
    bool m_x11 = false;
};
