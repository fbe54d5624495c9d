#include "platform/x11/X11TrayPainter.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace
{

constexpr uint8_t ArgbDepth = 32;

/// How QImage has premultiplied pixels.
bool isArgb(const xcb_render_pictforminfo_t &format)
{
    const xcb_render_directformat_t &bits = format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == ArgbDepth &&
        bits.alpha_shift == 24 && bits.alpha_mask == 0xff && bits.red_shift == 16 && bits.red_mask == 0xff &&
        bits.green_shift == 8 && bits.green_mask == 0xff && bits.blue_shift == 0 && bits.blue_mask == 0xff;
}

} // namespace

std::unique_ptr<X11TrayPainter> X11TrayPainter::open(X11Connection &connection)
{
    const xcb_query_extension_reply_t *const extension =
        xcb_get_extension_data(connection.get(), &xcb_render_id);
    if (!extension || !extension->present)
        return nullptr;
    std::unique_ptr<X11TrayPainter> painter(new X11TrayPainter(connection));
    return painter->readFormats() ? std::move(painter) : nullptr;
}

bool X11TrayPainter::readFormats()
{
    xcb_connection_t *const connection = m_connection.get();
    // Until a client tells which version it speaks, a server may refuse everything else.
    xcb_discard_reply(connection,
        xcb_render_query_version(connection, XCB_RENDER_MAJOR_VERSION, XCB_RENDER_MINOR_VERSION).sequence);
    const XcbReply<xcb_render_query_pict_formats_reply_t> reply(
        xcb_render_query_pict_formats_reply(connection, xcb_render_query_pict_formats(connection), nullptr));
    if (!reply)
        return false;
    const std::span formats(xcb_render_query_pict_formats_formats(reply.get()), reply->num_formats);
    const auto argb = std::ranges::find_if(formats, isArgb);
    if (argb == formats.end())
        return false;
    m_argb = argb->id;
    auto screen = xcb_render_query_pict_formats_screens_iterator(reply.get());
    for (; screen.rem > 0; xcb_render_pictscreen_next(&screen)) {
        auto depth = xcb_render_pictscreen_depths_iterator(screen.data);
        for (; depth.rem > 0; xcb_render_pictdepth_next(&depth)) {
            const std::span visuals(xcb_render_pictdepth_visuals(depth.data), depth.data->num_visuals);
            for (const xcb_render_pictvisual_t &visual : visuals)
                m_formats[visual.visual] = visual.format;
        }
    }
    return true;
}

xcb_pixmap_t X11TrayPainter::upload(const QImage &image)
{
    xcb_connection_t *const connection = m_connection.get();
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto width = static_cast<uint16_t>(pixels.width());
    const auto height = static_cast<uint16_t>(pixels.height());
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    xcb_create_pixmap(connection, ArgbDepth, pixmap, m_connection.root(), width, height);
    const xcb_gcontext_t context = xcb_generate_id(connection);
    xcb_create_gc(connection, context, pixmap, 0, nullptr);
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height, 0, 0, 0, ArgbDepth,
        static_cast<uint32_t>(pixels.sizeInBytes()), pixels.constBits());
    xcb_free_gc(connection, context);
    return pixmap;
}

void X11TrayPainter::paint(xcb_window_t window, xcb_visualid_t visual, const QImage &image, const QPoint &at)
{
    xcb_connection_t *const connection = m_connection.get();
    const xcb_pixmap_t pixmap = upload(image);
    const xcb_render_picture_t source = xcb_generate_id(connection);
    xcb_render_create_picture(connection, source, pixmap, m_argb, 0, nullptr);
    const xcb_render_picture_t target = xcb_generate_id(connection);
    xcb_render_create_picture(connection, target, window, m_formats[visual], 0, nullptr);
    xcb_render_composite(connection, XCB_RENDER_PICT_OP_OVER, source, XCB_RENDER_PICTURE_NONE, target, 0, 0,
        0, 0, static_cast<int16_t>(at.x()), static_cast<int16_t>(at.y()),
        static_cast<uint16_t>(image.width()), static_cast<uint16_t>(image.height()));
    xcb_render_free_picture(connection, target);
    xcb_render_free_picture(connection, source);
    xcb_free_pixmap(connection, pixmap);
}
