// Owners for what GLib hands out. Move-only; each frees with the function its kind asks for.
#pragma once

#include <memory>

#include <gio/gio.h>

namespace kelvane {

struct GFreeDeleter {
  void operator()(void* memory) const { g_free(memory); }
};
struct GObjectDeleter {
  void operator()(void* object) const { g_object_unref(object); }
};
struct GVariantDeleter {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
struct GErrorDeleter {
  void operator()(GError* error) const { g_error_free(error); }
};
struct GVariantTypeDeleter {
  void operator()(GVariantType* type) const { g_variant_type_free(type); }
};
struct GDBusNodeInfoDeleter {
  void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
};

using GCharPtr = std::unique_ptr<char, GFreeDeleter>;
template <typename T>
using GObjectPtr = std::unique_ptr<T, GObjectDeleter>;
using GVariantPtr = std::unique_ptr<GVariant, GVariantDeleter>;
using GErrorPtr = std::unique_ptr<GError, GErrorDeleter>;
using GDBusNodeInfoPtr = std::unique_ptr<GDBusNodeInfo, GDBusNodeInfoDeleter>;

// Takes over a floating variant.
inline GVariantPtr sinkVariant(GVariant* floating) {
  return GVariantPtr(g_variant_ref_sink(floating));
}
inline GVariantPtr shareVariant(GVariant* variant) { return GVariantPtr(g_variant_ref(variant)); }
template <typename T>
GObjectPtr<T> shareObject(T* object) {
  return GObjectPtr<T>(static_cast<T*>(g_object_ref(object)));
}

}  // namespace kelvane
