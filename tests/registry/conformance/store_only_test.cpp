// Where the store follows Windows and wine does not: values listed in
// creation order, the key name limit, no NUL added to strings.
#include "conformance_util.h"

namespace {

using namespace cadtools::testing;

std::vector<WStr> ValueNames(HKEY key) {
  std::vector<WStr> names;
  for (Listed v; (v = ValueAt(key, static_cast<DWORD>(names.size()))).result == ERROR_SUCCESS;) names.push_back(v.name);
  return names;
}

TEST(StoreOnly, ValuesListInCreationOrder) {
  ScratchRoot root("creation-order");
  const struct {
    const WCHAR* set;     // or null: then
    const WCHAR* remove;
    std::vector<WStr> listed;
  } steps[] = {
      {W("c"), nullptr, {W("c")}},
      {W("a"), nullptr, {W("c"), W("a")}},
      {W("B"), nullptr, {W("c"), W("a"), W("B")}},
      {W("A"), nullptr, {W("c"), W("a"), W("B")}},  // an update keeps its place and its name
      {nullptr, W("C"), {W("a"), W("B")}},
      {W("C"), nullptr, {W("a"), W("B"), W("C")}},  // written again: at the end
  };
  for (const auto& step : steps) {
    const LONG result = step.set != nullptr ? SetBytes(root.get(), step.set, REG_BINARY, "x")
                                            : reg::RegDeleteValueW(root.get(), step.remove);
    ASSERT_EQ(result, ERROR_SUCCESS);
    EXPECT_EQ(ValueNames(root.get()), step.listed) << "step #" << (&step - steps);
  }
}

TEST(StoreOnly, WindowsLimitsAndRights) {
  ScratchRoot root("limits");
  const WStr too_long(256, u'k');
  Key key;
  EXPECT_EQ(Create(root.get(), too_long, key), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Open(root.get(), too_long, key), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Open(root.get(), W(""), key, KEY_WRITE), ERROR_SUCCESS);
  EXPECT_EQ(reg::RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, nullptr),
            ERROR_ACCESS_DENIED);
  // A string without its NUL comes back as it was written.
  ASSERT_EQ(SetBytes(root.get(), W("s"), REG_SZ, std::string("a\0b\0", 4)), ERROR_SUCCESS);
  EXPECT_EQ(Query(root.get(), W("s")).bytes, std::string("a\0b\0", 4));
  // Predefined values beyond the four hives name nothing here.
  const HKEY current_config = CADTOOLS_PREDEFINED_HKEY(0x80000005u);
  EXPECT_EQ(Open(current_config, W("x"), key), ERROR_INVALID_HANDLE);
  EXPECT_EQ(reg::RegCloseKey(current_config), ERROR_SUCCESS);
}

}  // namespace
