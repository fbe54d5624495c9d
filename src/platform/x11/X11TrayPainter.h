#pragma once

#include "platform/x11/X11Connection.h"

#include <xcb/render.h>

#include <QImage>

/// Lays pictures with smooth edges over what a window shows (RENDER extension).
class X11TrayPainter
{
public:
    /// Null without the extension. The connection must outlive it.
    static std::unique_ptr<X11TrayPainter> open(X11Connection &connection);

    /// Whether windows of the visual can be painted in.
    bool canPaint(xcb_visualid_t visual) const { return m_formats.contains(visual); }

    /// Blends the picture over the window's content with its upper left corner at a place in the window.
    void paint(xcb_window_t window, xcb_visualid_t visual, const QImage &image, const QPoint &at);

private:
    explicit X11TrayPainter(X11Connection &connection)
        : m_connection(connection)
    {
    }
    bool readFormats();
    xcb_pixmap_t upload(const QImage &image);

    X11Connection &m_connection;
    xcb_render_pictformat_t m_argb = 0;
    std::unordered_map<xcb_visualid_t, xcb_render_pictformat_t> m_formats;
};
