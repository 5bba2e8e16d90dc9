#include "platform/linux/tray/desktop_settings.h"

#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace kelvane {
namespace {

constexpr const char* kAppearanceNamespace = "org.freedesktop.appearance";
constexpr const char* kInterfaceNamespace = "org.gnome.desktop.interface";
constexpr const char* kPanelChannel = "xfce4-panel";
constexpr const char* kSettingsChannel = "xsettings";

std::string textOf(const SettingsTable& table, const std::string& key) {
  const auto found = table.find(key);
  if (found == table.end() || !g_variant_is_of_type(found->second.get(), G_VARIANT_TYPE_STRING))
    return "";
  return g_variant_get_string(found->second.get(), nullptr);
}

// One changed value: signals name a table, a key and the value.
void store(SettingsTable& table, const char* key, GVariant* value) {
  table[key] = std::shared_ptr<GVariant>(g_variant_ref(value), GVariantDeleter());
}

}  // namespace

DesktopSettings::DesktopSettings(BusConnection* bus, std::function<void()> changed)
    : bus_(shareBus(bus)), changed_(std::move(changed)) {}

DesktopSettings::~DesktopSettings() = default;

void DesktopSettings::follow(TrayHost host) {
  if (isFollowing_ && host == host_) return;
  isFollowing_ = true;
  host_ = host;
  signals_.clear();
  services_.clear();
  calls_ = std::make_unique<BusCalls>();
  unanswered_ = 0;
  portalAppearance_.clear();
  portalInterface_.clear();
  xfcePanel_.clear();
  xfceSettings_.reset();
  monitorScale_.reset();
  followPortal();
  if (host == TrayHost::xfce) followXfconf();
  if (host == TrayHost::gnome) followMutter();
  if (host == TrayHost::plasma) followKScreen();
}

std::optional<Appearance> DesktopSettings::barAppearance() const {
  switch (profileOf(host_).barColor) {
    case BarColor::alwaysDark:
      return Appearance::dark;
    case BarColor::panelSettings:
      if (xfceSettings_) return appearanceOfXfcePanel(xfcePanel_, *xfceSettings_);
      return std::nullopt;
    case BarColor::colorScheme: {
      const auto found = portalAppearance_.find("color-scheme");
      return found == portalAppearance_.end() ? std::nullopt
                                              : appearanceOfColorScheme(found->second.get());
    }
    case BarColor::unknown:
      break;
  }
  return std::nullopt;
}

std::optional<bool> DesktopSettings::prefersDarkWindows() const {
  const auto found = portalAppearance_.find("color-scheme");
  return found == portalAppearance_.end() ? std::nullopt
                                          : darkWindowsOfColorScheme(found->second.get());
}

bool DesktopSettings::prefersReducedMotion() const {
  return wantsReducedMotion(portalAppearance_, portalInterface_,
                            xfceSettings_.value_or(SettingsTable{}));
}

std::optional<double> DesktopSettings::scale() const {
  // What was started with the session rules the programs of the session, the host among them.
  if (const auto scale =
          scaleOfEnvironment(host_, [](const char* name) { return std::getenv(name); }))
    return scale;
  if (xfceSettings_) return scaleOfXfce(*xfceSettings_);
  // GNOME draws at the next whole scale and shrinks the result.
  if (monitorScale_ && host_ == TrayHost::gnome) return std::ceil(*monitorScale_);
  return monitorScale_;
}

std::string DesktopSettings::fontFamily() const {
  if (xfceSettings_)
    if (const std::string font = textOf(*xfceSettings_, "/Gtk/FontName"); !font.empty())
      return fontFamilyOf(font);
  return fontFamilyOf(textOf(portalInterface_, "font-name"));
}

void DesktopSettings::followPortal() {
  const BusCalls::Target portal{"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                "org.freedesktop.portal.Settings"};
  hear(portal, "SettingChanged", [this](GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)"))) return;
    const char* space = nullptr;
    const char* key = nullptr;
    GVariant* rawValue = nullptr;
    g_variant_get(parameters, "(&s&sv)", &space, &key, &rawValue);
    const GVariantPtr value(rawValue);
    if (std::string_view(space) == kAppearanceNamespace) {
      store(portalAppearance_, key, value.get());
    } else if (std::string_view(space) == kInterfaceNamespace) {
      store(portalInterface_, key, value.get());
    } else {
      return;
    }
    tell();
  });
  ask(
      portal, "ReadAll",
      [] {
        const char* spaces[] = {kAppearanceNamespace, kInterfaceNamespace, nullptr};
        return g_variant_new("(^as)", spaces);
      },
      "(a{sa{sv}})",
      [this](GVariant* reply) {
        if (!reply) return;
        const GVariantPtr spaces(g_variant_get_child_value(reply, 0));
        for (gsize i = 0; i < g_variant_n_children(spaces.get()); ++i) {
          const char* space = nullptr;
          GVariant* rawKeys = nullptr;
          g_variant_get_child(spaces.get(), i, "{&s@a{sv}}", &space, &rawKeys);
          const GVariantPtr keys(rawKeys);
          if (std::string_view(space) == kAppearanceNamespace)
            portalAppearance_ = settingsTableOf(keys.get());
          if (std::string_view(space) == kInterfaceNamespace)
            portalInterface_ = settingsTableOf(keys.get());
        }
      });
}

void DesktopSettings::followXfconf() {
  const BusCalls::Target xfconf{"org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf"};
  const auto tableOf = [this](std::string_view channel) -> SettingsTable* {
    if (channel == kPanelChannel) return &xfcePanel_;
    if (channel == kSettingsChannel && xfceSettings_) return &*xfceSettings_;
    return nullptr;
  };
  hear(xfconf, "PropertyChanged", [this, tableOf](GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)"))) return;
    const char* channel = nullptr;
    const char* property = nullptr;
    GVariant* rawValue = nullptr;
    g_variant_get(parameters, "(&s&sv)", &channel, &property, &rawValue);
    const GVariantPtr value(rawValue);
    SettingsTable* table = tableOf(channel);
    if (!table) return;
    store(*table, property, value.get());
    tell();
  });
  hear(xfconf, "PropertyRemoved", [this, tableOf](GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ss)"))) return;
    const char* channel = nullptr;
    const char* property = nullptr;
    g_variant_get(parameters, "(&s&s)", &channel, &property);
    SettingsTable* table = tableOf(channel);
    if (table && table->erase(property) > 0) tell();
  });
  const auto read = [this, &xfconf](const char* channel, const char* base,
                                    std::function<void(SettingsTable)> use) {
    ask(
        xfconf, "GetAllProperties",
        [channel, base] { return g_variant_new("(ss)", channel, base); }, "(a{sv})",
        [use = std::move(use)](GVariant* reply) {
          // A channel in which nothing was ever set does not exist: nothing is set.
          if (!reply) return use({});
          const GVariantPtr properties(g_variant_get_child_value(reply, 0));
          use(settingsTableOf(properties.get()));
        });
  };
  read(kPanelChannel, "/panels", [this](SettingsTable table) { xfcePanel_ = std::move(table); });
  read(kSettingsChannel, "/", [this](SettingsTable table) { xfceSettings_ = std::move(table); });
}

void DesktopSettings::followMutter() {
  const BusCalls::Target mutter{"org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig",
                                "org.gnome.Mutter.DisplayConfig"};
  const auto read = [this](GVariant* reply) {
    if (reply) monitorScale_ = scaleOfMutter(reply);
  };
  ask(
      mutter, "GetCurrentState", [] { return nullptr; }, "r", read);
  hear(mutter, "MonitorsChanged", [this, mutter, read](GVariant*) {
    calls_->call(bus_.get(), mutter, "GetCurrentState", nullptr, "r", [this, read](BusReply reply) {
      read(reply.value.get());
      tell();
    });
  });
}

void DesktopSettings::followKScreen() {
  const BusCalls::Target screens{"org.kde.KScreen", "/backend", "org.kde.kscreen.Backend"};
  const auto read = [this](GVariant* reply) {
    if (reply) monitorScale_ = scaleOfKScreen(reply);
  };
  ask(
      screens, "getConfig", [] { return nullptr; }, "(a{sv})", read);
  hear(screens, "configChanged", [this, read](GVariant* parameters) {
    read(parameters);
    tell();
  });
}

void DesktopSettings::ask(const BusCalls::Target& target, const char* method,
                          std::function<GVariant*()> arguments, const char* replyType,
                          std::function<void(GVariant*)> use) {
  ++unanswered_;
  const auto isFirst = std::make_shared<bool>(true);
  const auto done = [this, isFirst] {
    if (std::exchange(*isFirst, false)) --unanswered_;
    tell();
  };
  services_.push_back(std::make_unique<NameWatch>(
      bus_.get(), target.destination,
      [this, target, method, arguments = std::move(arguments), replyType, use = std::move(use),
       done](const std::string& owner) {
        if (owner.empty()) return done();  // what was known stays: the service may only restart
        calls_->call(bus_.get(), target, method, arguments(), replyType,
                     [use, done](const BusReply& reply) {
                       use(reply.value.get());
                       done();
                     });
      }));
}

void DesktopSettings::hear(const BusCalls::Target& target, const char* member,
                           std::function<void(GVariant*)> handler) {
  signals_.push_back(std::make_unique<SignalSubscription>(
      bus_.get(),
      SignalSubscription::Match{target.destination, target.interface, member, target.path, ""},
      [handler = std::move(handler)](const char*, const char*, GVariant* parameters) {
        handler(parameters);
      }));
}

void DesktopSettings::tell() {
  if (isComplete()) changed_();
}

}  // namespace kelvane
