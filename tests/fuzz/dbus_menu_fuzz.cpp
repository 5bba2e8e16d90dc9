// Calls to the item's menu, over a real bus: the right types, and any value in them.
#include <memory>
#include <string>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

#include "platform/linux/glib/glib_run_loop.h"
#include "platform/linux/glib/private_bus_test.h"
#include "platform/linux/tray/dbus_menu.h"
#include "platform/memory/memory_menu.h"
#include "tests/fuzz/fuzzing.h"

using namespace kelvane;

namespace {

constexpr const char* kInterface = "com.canonical.dbusmenu";
constexpr const char* kStates[] = {"opened", "closed", "clicked", "hovered", ""};
constexpr int kMostCalls = 6;

// A menu of the application's kind, exported for the whole run. The submenu is another one after
// each update, and one line comes and goes.
class Exported {
 public:
  Exported() {
    lines_.make = [this] { return made(); };
    menu_.setMenu(&lines_);
    menu_.exportOn(ours_.get(), KeyNames::gtk);
  }

  void call(const char* method, GVariant* arguments, BusCalls::Done done) {
    calls_.call(host_.get(), {ours_->uniqueName(), DbusMenu::kPath, kInterface}, method, arguments,
                "r", std::move(done));
  }

  // After whatever was called: the menu is closed and answers as ever.
  void check() {
    lines_.history.clear();
    chosen_ = 0;
  }
  bool isOpenBalanced() const {
    int open = 0;
    for (const std::string& each : lines_.history) open += each == "opened" ? 1 : -1;
    return open >= -1 && open <= 1;
  }
  int chosen() const { return chosen_; }

 private:
  std::vector<MenuLine> made() {
    std::vector<MenuLine> lines;
    MenuLine text;
    text.title = "57%";
    text.isEnabled = false;
    text.action = [] { require(false, "a disabled line can't be chosen"); };
    lines.push_back(text);
    if (lines_.updates % 3 == 0) lines.push_back(text);
    MenuLine command;
    command.title = "Preferences…";
    command.keyEquivalent.key = ",";
    command.action = [this] { ++chosen_; };
    lines.push_back(command);
    MenuLine more;
    more.title = "More_";
    more.submenu = std::make_shared<MemoryMenu>(std::vector<MenuLine>{command});
    lines.push_back(more);
    return lines;
  }

  PrivateBus bus_;
  GlibRunLoop loop_;
  BusPtr ours_ = bus_.connect();
  BusPtr host_ = bus_.connect();
  BusCalls calls_;
  MemoryMenu lines_;
  DbusMenu menu_{loop_, {}};
  int chosen_ = 0;
};

int idFrom(FuzzedDataProvider& input) {
  return input.ConsumeIntegralInRange(0, 7) > 0 ? input.ConsumeIntegralInRange(0, 6)
                                                : input.ConsumeIntegral<int>();
}

std::string textFrom(FuzzedDataProvider& input) {
  std::string text = input.ConsumeRandomLengthString(16);
  // What is no text never comes over a bus.
  return g_utf8_validate_len(text.data(), text.size(), nullptr) ? text : "";
}

GVariant* eventFrom(FuzzedDataProvider& input) {
  const std::string name = input.ConsumeIntegralInRange(0, 7) > 0
                               ? std::string(input.PickValueInArray(kStates))
                               : textFrom(input);
  GVariant* data = input.ConsumeBool() ? g_variant_new_string(textFrom(input).c_str())
                                       : g_variant_new_int32(input.ConsumeIntegral<int>());
  return g_variant_new("(isvu)", idFrom(input), name.c_str(), data,
                       input.ConsumeIntegral<std::uint32_t>());
}

GVariant* idsFrom(FuzzedDataProvider& input) {
  std::vector<int> ids(input.ConsumeIntegralInRange<std::size_t>(0, 5));
  for (int& id : ids) id = idFrom(input);
  return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(int));
}

GVariant* namesFrom(FuzzedDataProvider& input) {
  GVariantBuilder names;
  g_variant_builder_init(&names, G_VARIANT_TYPE_STRING_ARRAY);
  for (int left = input.ConsumeIntegralInRange(0, 3); left > 0; --left)
    g_variant_builder_add(&names, "s", textFrom(input).c_str());
  return g_variant_builder_end(&names);
}

struct Call {
  const char* method;
  GVariant* arguments;
};

Call callFrom(FuzzedDataProvider& input) {
  switch (input.ConsumeIntegralInRange(0, 9)) {
    case 0: {
      const int parent = idFrom(input);
      const int depth = input.ConsumeIntegral<int>();
      return {"GetLayout", g_variant_new("(ii@as)", parent, depth, namesFrom(input))};
    }
    case 1: {
      GVariant* ids = idsFrom(input);
      return {"GetGroupProperties", g_variant_new("(@ai@as)", ids, namesFrom(input))};
    }
    case 2: {
      const int id = idFrom(input);
      return {"GetProperty", g_variant_new("(is)", id, textFrom(input).c_str())};
    }
    case 3: {
      GVariantBuilder events;
      g_variant_builder_init(&events, G_VARIANT_TYPE("a(isvu)"));
      for (int left = input.ConsumeIntegralInRange(0, 4); left > 0; --left)
        g_variant_builder_add_value(&events, eventFrom(input));
      return {"EventGroup", g_variant_new("(a(isvu))", &events)};
    }
    case 4:
      return {"AboutToShow", g_variant_new("(i)", idFrom(input))};
    case 5:
      return {"AboutToShowGroup", g_variant_new("(@ai)", idsFrom(input))};
    default:
      return {"Event", eventFrom(input)};
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto* exported = new Exported;
  FuzzedDataProvider input(data, size);
  exported->check();
  int waiting = 0;
  for (int left = kMostCalls; left > 0 && input.remaining_bytes() > 0; --left) {
    const Call call = callFrom(input);
    ++waiting;
    exported->call(call.method, call.arguments, [&waiting](const BusReply& answer) {
      require(answer || answer.errorName == kInvalidArguments,
              "a call is answered, or its arguments are refused");
      --waiting;
    });
    // Some come in one turn with the next one.
    if (input.ConsumeBool()) runUntil([&] { return waiting == 0; });
  }
  require(runUntil([&] { return waiting == 0; }), "every call is answered");
  runUntilIdle();
  require(exported->isOpenBalanced(), "an open menu is not opened again");
  require(exported->chosen() <= kMostCalls, "one call chooses one line at most");
  return 0;
}
