// An owner for GObject's objects, where a library hands such out. Move-only.
#pragma once

#include <memory>

#include <glib-object.h>

namespace kelvane {

struct GObjectDeleter {
  void operator()(void* object) const { g_object_unref(object); }
};

template <typename T>
using GObjectPtr = std::unique_ptr<T, GObjectDeleter>;

}  // namespace kelvane
