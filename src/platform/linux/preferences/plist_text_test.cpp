// From values to the bytes of a property list and back.
#include "platform/linux/preferences/plist_text.h"

#include <bit>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/preferences/plist_limits.h"

namespace kelvane {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

constexpr Date kDate = std::chrono::sys_days(std::chrono::year(2026) / 3 / 14) + 9h;

std::string xmlOf(const PropertyDictionary& values) { return plistXml(toPlist(values).get()); }

std::string binaryOf(const PropertyDictionary& values) {
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(toPlist(values).get(), &bytes, &size);
  std::string binary(bytes, size);
  plist_to_bin_free(bytes);
  return binary;
}

PropertyDictionary read(const std::string& bytes) {
  const auto parsed = parsePlist(bytes);
  EXPECT_EQ(parsed.problem, "");
  return valuesOf(parsed.dictionary.get());
}

const PropertyDictionary kEveryKind = {
    {"true", true},
    {"false", false},
    {"zero", 0},
    {"negative", -5},
    {"least", std::numeric_limits<std::int64_t>::min()},
    {"largest", std::numeric_limits<std::int64_t>::max()},
    {"whole real", 1.0},
    {"tiny", 1e-300},
    {"text", "a <b> & \"c\" 57﹪\n"},
    {"empty text", ""},
    {"<key> & more", "x"},
    {"date", kDate},
    {"early date", kDate - std::chrono::years(60)},
    {"data", PropertyData{std::byte{0}, std::byte{255}}},
    {"empty data", PropertyData{}},
    {"array", PropertyArray{1, 2.5, "three", PropertyArray{}}},
    {"dictionary", PropertyDictionary{{"inner", PropertyArray{true}}}},
};

TEST(PlistText, EveryKindComesBackInBothForms) {
  EXPECT_EQ(read(xmlOf(kEveryKind)), kEveryKind);
  EXPECT_EQ(read(binaryOf(kEveryKind)), kEveryKind);
  EXPECT_THAT(xmlOf({{"n", -5}}), HasSubstr("<integer>-5</integer>"));
}

// The locale is made here, because the country a computer is set up for should not matter.
TEST(PlistText, RealNumbersComeBackBitByBitWhereTheDecimalSignIsAComma) {
  const auto folder =
      std::filesystem::temp_directory_path() / ("kelvane-locale-" + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  std::ofstream(folder / "source") << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\n"
                                      "grouping -1\nEND LC_NUMERIC\n";
  const std::string make = "cd '" + folder.string() +
                           "' && localedef -c --no-archive -i source -f ANSI_X3.4-1968 ./comma "
                           ">log 2>&1";
  std::ignore = std::system(make.c_str());  // warns of the other categories by its exit code
  setenv("LOCPATH", folder.c_str(), 1);
  ASSERT_NE(std::setlocale(LC_NUMERIC, "comma"), nullptr) << make;
  EXPECT_EQ(std::to_string(0.5), "0,500000");

  PropertyArray levels = {0.1, 0.12, 0.15, 0.2,  0.25, 0.3, 0.35, 0.4, 0.5,
                          0.6, 0.7,  0.75, 0.77, 0.8,  0.9, 0.95, 0.97};
  levels.insert(levels.end(), {0.1 + 0.2, 1.0 / 3, 1e300, 0.0, 1.0});
  const auto values = read(xmlOf({{"levels", levels}}));
  const auto& back = *values.at("levels").array();
  ASSERT_EQ(back.size(), levels.size());
  for (std::size_t i = 0; i < levels.size(); ++i)
    EXPECT_EQ(std::bit_cast<std::uint64_t>(*back[i].number()),
              std::bit_cast<std::uint64_t>(*levels[i].number()));
  EXPECT_EQ(std::to_string(0.5), "0,500000") << "the caller's locale was changed";

  std::setlocale(LC_NUMERIC, "C");
  unsetenv("LOCPATH");
  std::filesystem::remove_all(folder);
}

TEST(PlistText, ValuesAreKeptAsTheyAreReadAgain) {
  const PropertyDictionary values = {{"date", kDate + 700ms},
                                     {"early", kDate - std::chrono::years(100) - 1us},
                                     {"in an array", PropertyArray{kDate + 1us}},
                                     {"never", Date::max()}};
  const PropertyValue kept = asKept(values);
  EXPECT_NE(kept, PropertyValue(values));
  EXPECT_EQ(PropertyValue(read(xmlOf(*kept.dictionary()))), kept);
  EXPECT_EQ(kept.dictionary()->at("date"), PropertyValue(kDate));
  EXPECT_EQ(asKept(kEveryKind), PropertyValue(kEveryKind));
}

TEST(PlistText, AKindThatValuesDoNotHaveIsLeftOutWithWhatHoldsIt) {
  const PlistNode dictionary(plist_new_dict());
  plist_dict_set_item(dictionary.get(), "uid", plist_new_uid(1));
  const plist_t array = plist_new_array();
  plist_array_append_item(array, plist_new_uid(1));
  plist_dict_set_item(dictionary.get(), "array", array);
  const plist_t inner = plist_new_dict();
  plist_dict_set_item(inner, "uid", plist_new_uid(1));
  plist_dict_set_item(inner, "text", plist_new_string("x"));
  plist_dict_set_item(dictionary.get(), "dictionary", inner);
  plist_dict_set_item(dictionary.get(), "text", plist_new_string("x"));
  EXPECT_EQ(valuesOf(dictionary.get()), (PropertyDictionary{{"text", "x"}}));
}

TEST(PlistText, ATruncatedFileIsRefusedOrComplete) {
  for (const std::string& whole : {xmlOf(kEveryKind), binaryOf(kEveryKind)}) {
    std::size_t refused = 0;
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const auto parsed = parsePlist(std::string_view(whole).substr(0, size));
      EXPECT_EQ(parsed.dictionary == nullptr, !parsed.problem.empty());
      if (parsed.dictionary) {
        EXPECT_EQ(valuesOf(parsed.dictionary.get()), kEveryKind) << size;
      } else {
        ++refused;
      }
    }
    EXPECT_GT(refused, whole.size() - 20);
  }
}

std::string repeat(const std::string& text, int count) {
  std::string repeated;
  for (int i = 0; i < count; ++i) repeated += text;
  return repeated;
}

// A dictionary in dictionaries, `depth` of them.
PropertyDictionary nested(int depth) {
  PropertyDictionary inner;
  for (int i = 1; i < depth; ++i) inner = PropertyDictionary{{"in", inner}};
  return inner;
}

TEST(PlistLimits, RefuseWhatIsNestedTooDeeply) {
  for (const auto& form : {xmlOf, binaryOf}) {
    EXPECT_EQ(read(form(nested(kMaximumPlistNesting))), nested(kMaximumPlistNesting));
    EXPECT_THAT(parsePlist(form(nested(kMaximumPlistNesting + 1))).problem, HasSubstr("deep"));
  }
}

TEST(PlistLimits, CountTheElementsOfXmlAndNothingElse) {
  const auto deep = repeat("<array>", kMaximumPlistNesting);
  const std::vector<std::pair<std::string, bool>> cases = {
      {deep, false},
      {deep + "<array>", true},
      {deep + "<array  >", true},
      {deep + "<dict a='b'>", true},
      {deep + "<array/>", true},
      {deep + "</array><array/><dict/><array /></array>", false},
      {deep + "</array><dict></dict><array>", false},
      {deep + "<!-- <array> --><?x <array>?><![CDATA[<array>]]>", false},
      {deep + "<!-- </array> --><array>", true},
      {deep + "<![CDATA[ > </array>]]><array>", true},
      {"</array></array>" + deep + "<array>", true},
      {repeat("<arrays><string>", 100), false},
      {repeat("<array></array>", 1000), false},
      {deep + "<", false},
      {deep + "<array", true},
      {deep + "<!--", false},
  };
  for (const auto& [text, isRefused] : cases)
    EXPECT_EQ(plistRefusal(text).has_value(), isRefused) << text.substr(deep.size());
}

TEST(PlistLimits, RefuseWhatIsTooLarge) {
  const std::string around = xmlOf({{"text", ""}});
  const auto withText = [](std::size_t size) { return xmlOf({{"text", std::string(size, 'x')}}); };
  EXPECT_EQ(parsePlist(withText(kMaximumPlistBytes - around.size())).problem, "");
  EXPECT_THAT(parsePlist(withText(kMaximumPlistBytes - around.size() + 1)).problem,
              HasSubstr("larger"));
}

// A binary list of arrays, each of which names the next one twice.
std::string doubling(int levels) {
  std::string bytes = "bplist00";
  std::string offsets;
  for (int i = 0; i < levels; ++i) {
    offsets += static_cast<char>(bytes.size());
    const char next = static_cast<char>(i + 1);
    bytes += {'\xA2', next, next};
  }
  offsets += static_cast<char>(bytes.size());
  bytes += '\x09';
  const auto table = static_cast<char>(bytes.size());
  const auto eight = [](char value) { return std::string(7, '\0') + value; };
  return bytes + offsets + std::string(6, '\0') + "\x01\x01" +
         eight(static_cast<char>(levels + 1)) + eight(0) + eight(table);
}

TEST(PlistLimits, RefuseBinaryListsThatUnfoldWithoutEnd) {
  EXPECT_EQ(plistRefusal(doubling(8)), std::nullopt);
  EXPECT_THAT(plistRefusal(doubling(31)).value_or(""), HasSubstr("too many"));
  auto circle = doubling(1);
  circle[9] = circle[10] = 0;
  EXPECT_THAT(plistRefusal(circle).value_or(""), HasSubstr("deep"));
}

}  // namespace
}  // namespace kelvane
