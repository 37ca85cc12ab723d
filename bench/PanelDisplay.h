#pragma once

#include <QByteArray>
#include <QRect>

#include <xcb/xcb.h>

#include <cstdlib>
#include <optional>

// The benches' view of the real program's panel on the X server: where it is, and a pointer to
// move at it.
struct PanelDisplay
{
    xcb_connection_t* c = nullptr;
    xcb_window_t root = 0;

    void warp(int x, int y)
    {
        xcb_warp_pointer(c, XCB_NONE, root, 0, 0, 0, 0, qint16(x), qint16(y));
        xcb_flush(c);
    }

    QRect geometry(xcb_window_t window)
    {
        auto* reply = xcb_get_geometry_reply(c, xcb_get_geometry(c, window), nullptr);
        if (!reply)
            return {};
        const QRect rect(reply->x, reply->y, reply->width, reply->height);
        std::free(reply);
        return rect;
    }

    // The panel: a top-level window titled "Brenlow" that is larger than Qt's 1 × 1 helpers.
    std::optional<xcb_window_t> findPanel()
    {
        auto* tree = xcb_query_tree_reply(c, xcb_query_tree(c, root), nullptr);
        if (!tree)
            return std::nullopt;
        std::optional<xcb_window_t> found;
        const xcb_window_t* children = xcb_query_tree_children(tree);
        for (int i = 0; i < xcb_query_tree_children_length(tree) && !found; ++i) {
            auto* name = xcb_get_property_reply(
                c, xcb_get_property(c, 0, children[i], XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 64), nullptr);
            if (!name)
                continue;
            const QByteArray title(static_cast<const char*>(xcb_get_property_value(name)),
                                   xcb_get_property_value_length(name));
            std::free(name);
            if (title == "Brenlow" && geometry(children[i]).width() > 1)
                found = children[i];
        }
        std::free(tree);
        return found;
    }
};
