#include "programs/kelvane-windows/picture_view.h"

#include <algorithm>

#include "platform/linux/drawing/bitmap.h"
#include "programs/kelvane-windows/accessibility.h"

namespace kelvane {

PictureView::PictureView(const Picture& picture, int side) : picture_(picture) {
  setAccessibleRole(Gtk::Widget::gobj(), GTK_ACCESSIBLE_ROLE_PRESENTATION);
  set_content_width(side);
  set_content_height(side);
  set_draw_func([this](const Cairo::RefPtr<Cairo::Context>& context, int width, int height) {
    draw(context, width, height);
  });
}

void PictureView::draw(const Cairo::RefPtr<Cairo::Context>& context, int width, int height) {
  const Size size = picture_.size;
  if (!(size.width > 0) || !(size.height > 0)) return;
  const double fit = std::min(width / size.width, height / size.height);
  const Size shown = {size.width * fit, size.height * fit};
  const Gdk::RGBA color = get_style_context()->get_color();
  const Image image = {
      {static_cast<double>(width), static_cast<double>(height)},
      false,
      [&](Canvas& canvas, const Rect&) {
        canvas.drawPicture(
            picture_,
            {(width - shown.width) / 2, (height - shown.height) / 2, shown.width, shown.height}, 1);
      }};
  const int scale = get_scale_factor();
  Bitmap bitmap =
      renderImage(faces_, image, scale,
                  Color{color.get_red(), color.get_green(), color.get_blue(), color.get_alpha()});
  if (bitmap.pixels.empty()) return;
  const auto surface = Cairo::ImageSurface::create(
      reinterpret_cast<unsigned char*>(bitmap.pixels.data()), Cairo::Surface::Format::ARGB32,
      bitmap.width, bitmap.height, bitmap.width * 4);
  cairo_surface_set_device_scale(surface->cobj(), scale, scale);
  context->set_source(surface, 0, 0);
  context->paint();
  // The pixels end with this call.
  surface->finish();
}

}  // namespace kelvane
