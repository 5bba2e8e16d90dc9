#include "platform/linux/windows/window_protocol.h"

#include <limits>
#include <type_traits>
#include <utility>

#include <nlohmann/json.hpp>

#include "platform/linux/windows/message_fields.h"

namespace kelvane {
namespace {

using nlohmann::json;

class Writer {
 public:
  template <typename T>
  void operator()(const char* key, const T& field) {
    object_[key] = asJson(field);
  }
  template <typename T>
  void orElse(const char* key, const T& field, const T& otherwise = T()) {
    if (!(field == otherwise)) object_[key] = asJson(field);
  }
  void orElse(const char* key, const std::optional<Picture>& picture) {
    if (picture) object_[key] = asJson(*picture);
  }

  template <typename T>
  static json asJson(const T& value) {
    if constexpr (std::is_enum_v<T>) {
      return namesOf(value)[static_cast<std::size_t>(value)];
    } else if constexpr (std::is_class_v<T>) {
      Writer writer;
      describe(writer, value);
      return std::move(writer.object_);
    } else {
      return value;
    }
  }
  static json asJson(const std::string& text) { return text; }
  template <typename T>
  static json asJson(const std::optional<T>& value) {
    return value ? asJson(*value) : json();
  }
  template <typename T>
  static json asJson(const std::vector<T>& values) {
    json list = json::array();
    for (const T& value : values) list.push_back(asJson(value));
    return list;
  }
  static json asJson(const Point& point) { return json::array({point.x, point.y}); }
  static json asJson(const Size& size) { return json::array({size.width, size.height}); }
  static json asJson(const Color& color) {
    return json::array({color.red, color.green, color.blue, color.alpha});
  }
  static json asJson(const PathStep& step) {
    json list = json::array({namesOf(step.kind)[static_cast<std::size_t>(step.kind)]});
    for (std::size_t index = 0; index < pointsOf(step.kind); ++index) {
      list.push_back(step.points[index].x);
      list.push_back(step.points[index].y);
    }
    return list;
  }

 private:
  json object_ = json::object();
};

// Leaves what can't be read as it was, and keeps the first error.
class Reader {
 public:
  Reader(const json& object, std::string& error) : object_(object), error_(error) {}

  template <typename T>
  void operator()(const char* key, T& field) {
    const auto found = object_.find(key);
    if (found != object_.end())
      readField(key, *found, field);
    else
      fail(std::string("“") + key + "” is missing");
  }
  template <typename T>
  void orElse(const char* key, T& field, const T& = T()) {
    const auto found = object_.find(key);
    if (found != object_.end()) readField(key, *found, field);
  }

 private:
  void fail(std::string text) {
    if (error_.empty()) error_ = std::move(text);
  }
  template <typename T>
  void readField(const char* key, const json& value, T& field) {
    if (!read(value, field)) fail(std::string("“") + key + "” is not what it should be");
  }

  template <typename T>
  bool read(const json& value, T& out) {
    if constexpr (std::is_enum_v<T>) {
      return readName(value, out);
    } else if constexpr (std::is_class_v<T>) {
      if (!value.is_object()) return false;
      Reader reader(value, error_);
      describe(reader, out);
      return error_.empty();
    } else if constexpr (std::is_same_v<T, bool>) {
      if (value.is_boolean()) out = value.get<bool>();
      return value.is_boolean();
    } else if constexpr (std::is_integral_v<T>) {
      const bool isBig = value.is_number_unsigned() &&
                         value.get<std::uint64_t>() > std::numeric_limits<std::uint32_t>::max();
      if (!value.is_number_integer() || isBig) return false;
      const auto number = value.get<std::int64_t>();
      if (!std::in_range<T>(number)) return false;
      out = static_cast<T>(number);
      return true;
    } else {
      if (value.is_number()) out = value.get<double>();
      return value.is_number();
    }
  }
  bool read(const json& value, std::string& out) {
    if (value.is_string()) out = value.get<std::string>();
    return value.is_string();
  }
  template <typename T>
  bool read(const json& value, std::optional<T>& out) {
    if (value.is_null()) {
      out.reset();
      return true;
    }
    return read(value, out.emplace());
  }
  template <typename T>
  bool read(const json& value, std::vector<T>& out) {
    if (!value.is_array()) return false;
    out.clear();
    for (const json& each : value)
      if (!read(each, out.emplace_back())) return false;
    return true;
  }
  bool read(const json& value, Point& out) { return readNumbers(value, 0, {&out.x, &out.y}); }
  bool read(const json& value, Size& out) {
    return readNumbers(value, 0, {&out.width, &out.height});
  }
  bool read(const json& value, Color& out) {
    return readNumbers(value, 0, {&out.red, &out.green, &out.blue, &out.alpha});
  }
  bool read(const json& value, PathStep& out) {
    if (!value.is_array() || value.empty() || !readName(value[0], out.kind)) return false;
    std::vector<double*> numbers;
    for (std::size_t index = 0; index < pointsOf(out.kind); ++index) {
      numbers.push_back(&out.points[index].x);
      numbers.push_back(&out.points[index].y);
    }
    return readNumbers(value, 1, numbers);
  }
  // A list that has these numbers from `first` on, and no more.
  bool readNumbers(const json& value, std::size_t first, const std::vector<double*>& numbers) {
    if (!value.is_array() || value.size() != first + numbers.size()) return false;
    for (std::size_t index = 0; index < numbers.size(); ++index)
      if (!read(value[first + index], *numbers[index])) return false;
    return true;
  }
  template <typename Enum>
  bool readName(const json& value, Enum& out) {
    const auto names = namesOf(Enum());
    for (std::size_t index = 0; index < names.size(); ++index)
      if (value == names[index]) {
        out = static_cast<Enum>(index);
        return true;
      }
    return false;
  }

  const json& object_;
  std::string& error_;
};

std::string textOf(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

template <typename Messages>
std::string encodeOneOf(const Messages& message) {
  json object = std::visit([](const auto& each) { return Writer::asJson(each); }, message);
  object["kind"] = kindsOf(message)[message.index()];
  return textOf(object) + "\n";
}

// Of objects and lists, whether or not they are closed.
bool isTooDeep(std::string_view text) {
  int depth = 0;
  bool isInString = false;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char each = text[index];
    if (isInString && each == '\\')
      ++index;
    else if (each == '"')
      isInString = !isInString;
    else if (!isInString && (each == '{' || each == '['))
      depth++;
    else if (!isInString && (each == '}' || each == ']'))
      depth--;
    if (depth > kMaximumDepth) return true;
  }
  return false;
}

// Anything but an object is an error.
json parse(std::string_view text, std::string& error) {
  if (text.size() > kMaximumLine)
    error = "a message is too long";
  else if (isTooDeep(text))
    error = "a message is nested too deeply";
  if (!error.empty()) return {};
  json object = json::parse(text, nullptr, false);
  if (!object.is_object()) error = "a message is not a JSON object";
  return object;
}

template <typename Message>
void readInto(Decoded<Message>& decoded, const json& object) {
  Message message;
  Reader reader(object, decoded.error);
  describe(reader, message);
  if (decoded.error.empty()) decoded.message = std::move(message);
}

template <typename Messages, std::size_t Index = 0>
void readKind(Decoded<Messages>& decoded, const json& object, const std::string& kind) {
  constexpr auto kKinds = kindsOf(Messages());
  static_assert(kKinds.size() == std::variant_size_v<Messages>);
  if constexpr (Index == kKinds.size()) {
    decoded.error = "a message is of an unknown kind: " + textOf(kind.substr(0, 40));
  } else if (kind != kKinds[Index]) {
    readKind<Messages, Index + 1>(decoded, object, kind);
  } else {
    Decoded<std::variant_alternative_t<Index, Messages>> one;
    readInto(one, object);
    decoded.error = one.error.empty() ? "" : "“" + kind + "” is malformed: " + one.error;
    if (one.message) decoded.message = std::move(*one.message);
  }
}

template <typename Messages>
Decoded<Messages> decodeOneOf(std::string_view line) {
  Decoded<Messages> decoded;
  const json object = parse(line, decoded.error);
  if (!decoded.error.empty()) return decoded;
  const auto kind = object.find("kind");
  if (kind == object.end() || !kind->is_string())
    decoded.error = "a message has no kind";
  else
    readKind(decoded, object, kind->get<std::string>());
  return decoded;
}

}  // namespace

std::string encode(const Greeting& greeting) { return textOf(Writer::asJson(greeting)) + "\n"; }
std::string encode(const WindowRequest& request) { return encodeOneOf(request); }
std::string encode(const WindowEvent& event) { return encodeOneOf(event); }

Decoded<Greeting> decodeGreeting(std::string_view line) {
  Decoded<Greeting> decoded;
  const json object = parse(line, decoded.error);
  if (!decoded.error.empty()) return decoded;
  const auto protocol = object.find("protocol");
  if (protocol == object.end() || !protocol->is_number_integer())
    decoded.error = "there is no greeting";
  else if (*protocol != kWindowProtocol)
    decoded.error = "the other side speaks protocol " + textOf(*protocol) + ", this one " +
                    std::to_string(kWindowProtocol);
  else
    readInto(decoded, object);
  return decoded;
}

Decoded<WindowRequest> decodeRequest(std::string_view line) {
  return decodeOneOf<WindowRequest>(line);
}
Decoded<WindowEvent> decodeEvent(std::string_view line) { return decodeOneOf<WindowEvent>(line); }

std::string encodeView(const ViewNode& tree) { return textOf(Writer::asJson(tree)); }

Decoded<ViewNode> decodeView(std::string_view text) {
  Decoded<ViewNode> decoded;
  const json object = parse(text, decoded.error);
  if (decoded.error.empty()) readInto(decoded, object);
  return decoded;
}

}  // namespace kelvane
