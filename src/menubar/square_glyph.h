// The item in a bar that squeezes everything into a square: the text as large as it fits, a level
// gauge below it, a bolt or a plug on power. All edges lie on whole pixels. Main thread.
#pragma once

#include "menubar/item_context.h"
#include "platform/image.h"
#include "platform/status_bar.h"

namespace kelvane {

// An image of slot height by slot height, in icon mode and in text mode. The battery and the
// settings are read when it is drawn. Below 20 pixels the percent sign gives way to larger digits.
// Where the host shows a text beside the image it is the battery's body alone, and in text mode the
// bolt alone. Not yet marked as a template.
Image makeSquareImage(const ItemContext& context, const Slot& slot);

}  // namespace kelvane
