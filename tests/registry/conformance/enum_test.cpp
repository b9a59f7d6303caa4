// Listing subkeys and values, and what RegQueryInfoKeyW counts.
#include "conformance_util.h"

#include <cstring>

namespace {

using namespace cadtools::testing;

void CreateAll(HKEY base, std::initializer_list<const WCHAR*> paths) {
  for (const WCHAR* path : paths) {
    Key key;
    ASSERT_EQ(Create(base, path, key), ERROR_SUCCESS);
  }
}

TEST(EnumKeys, NameBufferProtocol) {
  ScratchRoot root("enum-keys");
  CreateAll(root.get(), {W("Beta"), W("alpha"), W("GAMMA12")});
  // The capacity counts the NUL; the length returned does not.
  const struct {
    DWORD capacity;
    LONG result;
    DWORD length;
  } cases[] = {{0, ERROR_MORE_DATA, 0}, {5, ERROR_MORE_DATA, 5}, {6, ERROR_SUCCESS, 5}, {40, ERROR_SUCCESS, 5}};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "capacity " << c.capacity);
    WCHAR name[40] = {'z', 0};
    WCHAR class_name[4] = {'z', 0};
    DWORD length = c.capacity, class_length = 4;
    EXPECT_EQ(reg::RegEnumKeyExW(root.get(), 0, name, &length, nullptr, class_name, &class_length, nullptr), c.result);
    EXPECT_EQ(length, c.length);
    EXPECT_EQ(WStr(name), c.result == ERROR_SUCCESS ? W("alpha") : W("z"));
    EXPECT_EQ(class_length, c.result == ERROR_SUCCESS ? 0u : 4u);
  }
  WCHAR name[40];
  DWORD length = 40;
  EXPECT_EQ(reg::RegEnumKeyExW(root.get(), 3, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(length, 40u);
}

TEST(EnumKeys, OrderIgnoresCase) {
  ScratchRoot root("order");
  // Upper-cased these are 10, 9, A, A1, B, B2, Z, É, Ā in code-unit order.
  CreateAll(root.get(), {W("b"), W("\u0100"), W("A"), W("Z"), W("a1"), W("10"), W("\u00E9"), W("B2"), W("9")});
  const WCHAR* expected[] = {W("10"), W("9"), W("A"), W("a1"), W("b"), W("B2"), W("Z"), W("\u00E9"), W("\u0100")};
  for (DWORD i = 0; i < std::size(expected); ++i) EXPECT_EQ(SubkeyAt(root.get(), i).name, expected[i]) << i;
  EXPECT_EQ(SubkeyAt(root.get(), std::size(expected)).result, ERROR_NO_MORE_ITEMS);
}

TEST(EnumValues, NameAndDataBufferProtocol) {
  ScratchRoot root("enum-values");
  ASSERT_EQ(SetBytes(root.get(), W("Four"), REG_BINARY, "abcdef"), ERROR_SUCCESS);
  const struct {
    DWORD name_capacity, data_capacity;
    LONG result;
    DWORD length;         // of the name afterwards
    bool name_copied, data_copied;
  } cases[] = {
      {4, 100, ERROR_MORE_DATA, 4, false, false},  // the name needs room for its NUL
      {3, 0, ERROR_MORE_DATA, 3, false, false},
      {5, 5, ERROR_MORE_DATA, 4, true, false},
      {5, 6, ERROR_SUCCESS, 4, true, true},
      {5, 100, ERROR_SUCCESS, 4, true, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "capacities " << c.name_capacity << ", " << c.data_capacity);
    WCHAR name[8] = {'z', 0};
    BYTE data[100];
    std::memset(data, 'Z', sizeof data);
    DWORD length = c.name_capacity, size = c.data_capacity, type = 0;
    EXPECT_EQ(reg::RegEnumValueW(root.get(), 0, name, &length, nullptr, &type, data, &size), c.result);
    EXPECT_EQ(length, c.length);
    EXPECT_EQ(WStr(name), c.name_copied ? W("Four") : W("z"));
    EXPECT_EQ(std::memcmp(data, c.data_copied ? "abcdef" : "ZZZZZZ", 6), 0);
    if (c.name_copied) {
      EXPECT_EQ(type, DWORD{REG_BINARY});
      EXPECT_EQ(size, 6u);
    }
  }
  WCHAR name[8];
  DWORD length = 8;
  BYTE data[8];
  EXPECT_EQ(reg::RegEnumValueW(root.get(), 0, name, &length, nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(ValueAt(root.get(), 1).result, ERROR_NO_MORE_ITEMS);
}

TEST(QueryInfoKey, CountsAndLongest) {
  ScratchRoot root("info");
  Key full, empty;
  ASSERT_EQ(Create(root.get(), W("full"), full), ERROR_SUCCESS);
  ASSERT_EQ(Create(root.get(), W("empty"), empty), ERROR_SUCCESS);
  CreateAll(full.get(), {W("Beta"), W("alpha"), W("GAMMA12"), W("alpha\\deeper-and-longer")});
  ASSERT_EQ(SetBytes(full.get(), W("Four"), REG_BINARY, "abcdef"), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(full.get(), nullptr, REG_BINARY, "abcdefgh"), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(full.get(), W("\u00E9t\u00E9"), REG_BINARY, ""), ERROR_SUCCESS);
  const struct {
    HKEY key;
    DWORD subkeys, longest_subkey, values, longest_name, largest_data;
  } cases[] = {{full.get(), 3, 7, 3, 4, 8}, {empty.get(), 0, 0, 0, 0, 0}};
  for (const auto& c : cases) {
    DWORD subkeys = 99, longest_subkey = 99, longest_class = 99, values = 99, longest_name = 99, largest_data = 99;
    WCHAR class_name[4] = {'z', 0};
    DWORD class_length = 4;
    ASSERT_EQ(reg::RegQueryInfoKeyW(c.key, class_name, &class_length, nullptr, &subkeys, &longest_subkey,
                                    &longest_class, &values, &longest_name, &largest_data, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(subkeys, c.subkeys);
    EXPECT_EQ(longest_subkey, c.longest_subkey);
    EXPECT_EQ(values, c.values);
    EXPECT_EQ(longest_name, c.longest_name);
    EXPECT_EQ(largest_data, c.largest_data);
    EXPECT_EQ(class_length, 0u);
    EXPECT_EQ(longest_class, 0u);
  }
}

}  // namespace
