#pragma once

#include "shell/PanelWindow.h"

// A panel window without a screen: it records what it was asked to do.
class MemoryPanelWindow final : public PanelWindow
{
public:
    QRectF frame() const override { return m_frame; }
    void setFrame(const QRectF& frame, bool animate) override;
    bool isShown() const override { return m_visible; }
    void orderFront() override { m_visible = true; }
    void orderOut() override { m_visible = false; }
    void makeKey() override { m_key = true; }
    void resignKey() override { m_key = false; }
    bool isKey() const override { return m_key; }

    int frameChanges() const { return m_frameChanges; }
    int animatedChanges() const { return m_animatedChanges; }
    bool lastChangeAnimated() const { return m_lastAnimated; }

private:
    QRectF m_frame;
    bool m_visible = false;
    bool m_key = false;
    int m_frameChanges = 0;
    int m_animatedChanges = 0;
    bool m_lastAnimated = false;
};
