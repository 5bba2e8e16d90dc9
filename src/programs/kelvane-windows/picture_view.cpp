#include "programs/kelvane-windows/picture_view.h"

#include <algorithm>

#include "platform/linux/drawing/cairo_canvas.h"
#include "programs/kelvane-windows/accessibility.h"

namespace kelvane {

PictureView::PictureView(const Picture& picture, int side) : picture_(picture) {
  setAccessibleRole(Gtk::Widget::gobj(), GTK_ACCESSIBLE_ROLE_PRESENTATION);
  set_content_width(side);
  set_content_height(side);
  set_draw_func([this](const Cairo::RefPtr<Cairo::Context>& context, int width, int height) {
    draw(context->cobj(), width, height);
  });
}

void PictureView::draw(cairo_t* context, int width, int height) {
  const Size size = picture_.size;
  if (!(size.width > 0) || !(size.height > 0)) return;
  const double scale = std::min(width / size.width, height / size.height);
  const Size shown = {size.width * scale, size.height * scale};
  const Gdk::RGBA color = get_style_context()->get_color();
  // Pictures have y upwards.
  cairo_translate(context, 0, height);
  cairo_scale(context, 1, -1);
  CairoCanvas(context, faces_,
              {color.get_red(), color.get_green(), color.get_blue(), color.get_alpha()})
      .drawPicture(
          picture_,
          {(width - shown.width) / 2, (height - shown.height) / 2, shown.width, shown.height}, 1);
}

}  // namespace kelvane
