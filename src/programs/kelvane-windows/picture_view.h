// Draws a picture from its outlines, exact at every scale. Main thread.
#pragma once

#include <gtkmm/drawingarea.h>

#include "platform/linux/drawing/font_faces.h"
#include "platform/picture.h"

namespace kelvane {

class PictureView : public Gtk::DrawingArea {
 public:
  // In a square of so many pixels, its proportions kept. What has no colour of its own is drawn in
  // the colour of the text around it.
  PictureView(const Picture& picture, int side);

 private:
  void draw(const Cairo::RefPtr<Cairo::Context>& context, int width, int height);
  Picture picture_;
  // The canvas asks for it. No text is drawn with it: it would give back all fonts of the process.
  FontFaces faces_;
};

}  // namespace kelvane
