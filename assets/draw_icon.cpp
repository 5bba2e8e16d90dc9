// Draws an SVG file as a square PNG file: draw-icon IN.svg SIZE OUT.png. For the build only.

#include <cstdio>
#include <cstdlib>

#include <gdk-pixbuf/gdk-pixbuf.h>

int main(int argumentCount, char** arguments) {
  const int size = argumentCount == 4 ? std::atoi(arguments[2]) : 0;
  if (size <= 0) {
    std::fprintf(stderr, "use: draw-icon IN.svg SIZE OUT.png\n");
    return 2;
  }
  GError* error = nullptr;
  GdkPixbuf* picture = gdk_pixbuf_new_from_file_at_size(arguments[1], size, size, &error);
  if (!picture ||
      !gdk_pixbuf_save(picture, arguments[3], "png", &error, "compression", "9", nullptr)) {
    std::fprintf(stderr, "draw-icon: %s: %s\n", arguments[1], error->message);
    return 1;
  }
  g_object_unref(picture);
  return 0;
}
