#pragma once

#include "model/Page.h"
#include "platform/Displays.h"
#include "settings/PreferenceValues.h"

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

// What the panel's size depends on.
struct PanelSizeInputs
{
    bool introActive = false;
    bool expanded = false;
    Page page = Page::home;
    bool mini = false;
    PanelLayout layout = PanelLayout::balanced;
};

// Where the panel hangs and how large it is. Global coordinates with y growing downwards, so a
// display's top edge is frame.top() and every panel frame starts there.
class NotchGeometry
{
public:
    static constexpr double fallbackWidth = 160;
    static constexpr double fallbackHeight = 24;
    static constexpr double activationSide = 4;
    static constexpr double activationBelow = 6;
    static constexpr double welcomeGrowthWidth = 24;
    static constexpr double welcomeGrowthHeight = 16;
    static constexpr double openHeightAddition = 156;
    static constexpr double repositionQuietTime = 0.2;
    static constexpr double resizeDuration = 0.16;

    // Index into `displays`: the main display when asked for, else the first with a notch, else the
    // focused one, else the first; nothing without displays.
    static std::optional<int> chooseDisplay(const QList<DisplayInfo>& displays, std::optional<int> focused,
                                            bool screenMain);
    // The camera housing, or the fallback rectangle centred at the top edge.
    static QRectF notchRect(const DisplayInfo& display);
    // The notch widened at both sides and lengthened below; the top edge stays at the display's top.
    static QRectF activationRect(const QRectF& notch);
    static QSizeF panelSize(const PanelSizeInputs& state, QSizeF notch);
    // Centred on the notch, hanging from the display's top edge.
    static QRectF panelFrame(const QRectF& notch, const QRectF& displayFrame, QSizeF size);
    // Every edge counts as inside; an empty rectangle contains nothing.
    static bool contains(const QRectF& rect, QPointF point);
};
