#include "shell/MemoryPanelWindow.h"

void MemoryPanelWindow::setFrame(const QRectF& frame, bool animate)
{
    m_frame = frame;
    ++m_frameChanges;
    m_lastAnimated = animate;
    if (animate)
        ++m_animatedChanges;
}
