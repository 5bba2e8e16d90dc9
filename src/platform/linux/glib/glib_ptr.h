// Owners for what GLib hands out. Move-only; each frees with the function its kind asks for.
#pragma once

#include <memory>

#include <glib.h>

namespace kelvane {

struct GFreeDeleter {
  void operator()(void* memory) const { g_free(memory); }
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

using GCharPtr = std::unique_ptr<char, GFreeDeleter>;
using GVariantPtr = std::unique_ptr<GVariant, GVariantDeleter>;
using GErrorPtr = std::unique_ptr<GError, GErrorDeleter>;

// Takes over a floating variant.
inline GVariantPtr sinkVariant(GVariant* floating) {
  return GVariantPtr(g_variant_ref_sink(floating));
}
inline GVariantPtr shareVariant(GVariant* variant) { return GVariantPtr(g_variant_ref(variant)); }

}  // namespace kelvane
