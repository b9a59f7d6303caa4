// Values: types and bytes kept as written, the buffer protocol of
// RegQueryValueExW, the default value, name limits and access rights.
#include "conformance_util.h"

#include <cstring>

namespace {

using namespace cadtools::testing;

std::string Utf16Bytes(const WStr& text) {
  std::string bytes;
  for (const WCHAR unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>((unit >> 8) & 0xFF);
  }
  return bytes;
}

TEST(Values, TypesAndBytesComeBackAsWritten) {
  ScratchRoot root("bytes");
  const struct {
    DWORD type;
    std::string bytes;
  } cases[] = {
      {REG_BINARY, ""},
      {REG_BINARY, "abc"},                                  // odd length
      {REG_DWORD, "abc"},                                   // sizes are not checked against types
      {REG_DWORD, "abcdefgh"},
      {0x12345678, std::string("\0\1\0", 3)},               // a type number Windows does not know
      {REG_NONE, ""},
      {REG_SZ, ""},
      {REG_SZ, Utf16Bytes(WStr(W("a\0b\0"), 4))},          // an embedded NUL stays
      {REG_MULTI_SZ, Utf16Bytes(WStr(W("one\0two\0\0"), 9))},
      {REG_BINARY, std::string(100000, '\xA5')},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "value #" << (&c - cases));
    ASSERT_EQ(SetBytes(root.get(), W("v"), c.type, c.bytes), ERROR_SUCCESS);
    const Stored stored = Query(root.get(), W("v"));
    EXPECT_EQ(stored.result, ERROR_SUCCESS);
    EXPECT_EQ(stored.type, c.type);
    EXPECT_EQ(stored.bytes, c.bytes);
    // Listing gives the same type and size.
    WCHAR name[8];
    DWORD length = 8, type = 0, size = 0;
    ASSERT_EQ(reg::RegEnumValueW(root.get(), 0, name, &length, nullptr, &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, c.type);
    EXPECT_EQ(size, c.bytes.size());
  }
}

TEST(Values, QueryBufferProtocol) {
  ScratchRoot root("buffers");
  ASSERT_EQ(SetBytes(root.get(), W("six"), REG_BINARY, "abcdef"), ERROR_SUCCESS);
  const struct {
    bool buffer;
    DWORD capacity;
    LONG result;
    bool copied;
  } cases[] = {
      {false, 0, ERROR_SUCCESS, false},  // size query
      {true, 10, ERROR_SUCCESS, true},   {true, 6, ERROR_SUCCESS, true},
      {true, 5, ERROR_MORE_DATA, false}, {true, 0, ERROR_MORE_DATA, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "capacity " << c.capacity << (c.buffer ? "" : " without buffer"));
    BYTE data[16];
    std::memset(data, 0x5A, sizeof data);
    DWORD type = 99, size = c.capacity;
    EXPECT_EQ(reg::RegQueryValueExW(root.get(), W("SIX"), nullptr, &type, c.buffer ? data : nullptr, &size), c.result);
    EXPECT_EQ(type, DWORD{REG_BINARY});
    EXPECT_EQ(size, 6u);  // what the value needs, also when it did not fit
    EXPECT_EQ(std::memcmp(data, c.copied ? "abcdef" : "ZZZZZZ", 6), 0);
  }
  BYTE data[8];
  EXPECT_EQ(reg::RegQueryValueExW(root.get(), W("six"), nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(reg::RegQueryValueExW(root.get(), W("six"), nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
  EXPECT_EQ(reg::RegQueryValueExW(root.get(), W("seven"), nullptr, nullptr, nullptr, nullptr), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(reg::RegSetValueExW(root.get(), W("null"), 0, REG_BINARY, nullptr, 4), ERROR_NOACCESS);
  EXPECT_EQ(reg::RegSetValueExW(root.get(), W("null"), 0, REG_BINARY, nullptr, 0), ERROR_SUCCESS);
}

TEST(Values, DefaultValueIsTheEmptyName) {
  ScratchRoot root("default");
  EXPECT_EQ(Query(root.get(), nullptr).result, ERROR_FILE_NOT_FOUND);
  ASSERT_EQ(SetBytes(root.get(), nullptr, REG_SZ, Utf16Bytes(WStr(W("d\0"), 2))), ERROR_SUCCESS);
  EXPECT_EQ(Query(root.get(), W("")).bytes, Utf16Bytes(WStr(W("d\0"), 2)));
  WCHAR name[8] = {'x', 0};
  DWORD length = 8;
  ASSERT_EQ(reg::RegEnumValueW(root.get(), 0, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
  EXPECT_EQ(length, 0u);
  EXPECT_EQ(name[0], 0);
  EXPECT_EQ(reg::RegDeleteValueW(root.get(), W("")), ERROR_SUCCESS);
  EXPECT_EQ(reg::RegDeleteValueW(root.get(), nullptr), ERROR_FILE_NOT_FOUND);
}

TEST(Values, NamesCompareWithoutCaseAndKeepTheFirstSpelling) {
  ScratchRoot root("value-case");
  ASSERT_EQ(SetBytes(root.get(), W("Val\u00E9"), REG_DWORD, "1234"), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(root.get(), W("VAL\u00C9"), REG_BINARY, "xy"), ERROR_SUCCESS);  // the same value
  EXPECT_EQ(ValueAt(root.get(), 0).name, W("Val\u00E9"));
  EXPECT_EQ(ValueAt(root.get(), 1).result, ERROR_NO_MORE_ITEMS);
  const Stored stored = Query(root.get(), W("val\u00C9"));
  EXPECT_EQ(stored.type, DWORD{REG_BINARY});
  EXPECT_EQ(stored.bytes, "xy");
  EXPECT_EQ(reg::RegDeleteValueW(root.get(), W("val\u00E9")), ERROR_SUCCESS);
}

TEST(Values, NameLengthLimit) {
  ScratchRoot root("value-names");
  const struct {
    std::size_t units;
    LONG set, query;
  } cases[] = {{16383, ERROR_SUCCESS, ERROR_SUCCESS}, {16384, ERROR_INVALID_PARAMETER, ERROR_FILE_NOT_FOUND}};
  for (const auto& c : cases) {
    const WStr name(c.units, static_cast<WCHAR>('n'));
    EXPECT_EQ(SetBytes(root.get(), name.c_str(), REG_BINARY, "x"), c.set) << c.units;
    EXPECT_EQ(Query(root.get(), name.c_str()).result, c.query) << c.units;
  }
  DWORD longest = 0;
  ASSERT_EQ(reg::RegQueryInfoKeyW(root.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &longest,
                                  nullptr, nullptr, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(longest, 16383u);
}

TEST(Access, RightsOfTheHandleDecide) {
  ScratchRoot root("access");
  Key sub;
  ASSERT_EQ(Create(root.get(), W("sub"), sub), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(root.get(), W("v"), REG_BINARY, "x"), ERROR_SUCCESS);
  // Result of: query "v", query a missing value, set, delete a missing
  // value, list values, list subkeys.
  const struct {
    REGSAM rights;
    LONG query, query_missing, set, erase, values, subkeys;
  } cases[] = {
      {KEY_READ, 0, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, 0, 0},
      {KEY_WRITE, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, 0, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED,
       ERROR_ACCESS_DENIED},
      {KEY_ALL_ACCESS, 0, ERROR_FILE_NOT_FOUND, 0, ERROR_FILE_NOT_FOUND, 0, 0},
      {KEY_QUERY_VALUE, 0, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, 0, ERROR_ACCESS_DENIED},
      {KEY_SET_VALUE, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, 0, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED,
       ERROR_ACCESS_DENIED},
      {0, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED,
       ERROR_ACCESS_DENIED},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "rights 0x" << std::hex << c.rights);
    Key key;
    ASSERT_EQ(reg::RegOpenKeyExW(HKEY_CURRENT_USER, root.scratch().path(), 0, c.rights, key.out()), ERROR_SUCCESS);
    const HKEY h = key.get();
    EXPECT_EQ(reg::RegQueryValueExW(h, W("v"), nullptr, nullptr, nullptr, nullptr), c.query);
    EXPECT_EQ(reg::RegQueryValueExW(h, W("w"), nullptr, nullptr, nullptr, nullptr), c.query_missing);
    EXPECT_EQ(SetBytes(h, W("v"), REG_BINARY, "y"), c.set);
    EXPECT_EQ(reg::RegDeleteValueW(h, W("w")), c.erase);
    EXPECT_EQ(ValueAt(h, 0).result, c.values);
    EXPECT_EQ(SubkeyAt(h, 0).result, c.subkeys);
    // Opening below a key needs no right on it.
    Key below;
    EXPECT_EQ(Open(h, W("sub"), below), ERROR_SUCCESS);
  }
}

// Units as the caller has them in memory, followed by units that are no
// NUL, so that nothing past the array is ever looked at.
struct Memory {
  explicit Memory(std::u16string_view units) {
    for (WCHAR& unit : buffer) unit = 0xFFFF;
    std::copy(units.begin(), units.end(), buffer);
  }
  const BYTE* bytes() const { return reinterpret_cast<const BYTE*>(buffer); }
  WCHAR buffer[16];
};

// A literal with its embedded NULs (not its own terminator).
template <std::size_t N>
constexpr std::u16string_view Units(const char16_t (&literal)[N]) {
  return {literal, N - 1};
}

TEST(Values, StringDataWithoutItsTerminator) {
  ScratchRoot root("terminators");
  const struct {
    DWORD type;
    std::u16string_view memory;
    DWORD size;
    std::size_t stored;  // bytes
  } cases[] = {
      {REG_SZ, Units(u"ab\0"), 4, 6},  // the NUL after the data goes with it
      {REG_EXPAND_SZ, Units(u"ab\0"), 4, 6},
      {REG_MULTI_SZ, Units(u"a\0b\0"), 6, 8},
      {REG_SZ, Units(u"abcd"), 4, 4},  // no NUL after it
      {REG_SZ, Units(u"ab\0\0"), 6, 6},  // counted already
      {REG_BINARY, Units(u"ab\0"), 4, 4},  // not string data
      {REG_DWORD, Units(u"ab\0"), 4, 4},
      {REG_SZ, Units(u"\0"), 0, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "case #" << (&c - cases));
    const Memory memory(c.memory);
    ASSERT_EQ(reg::RegSetValueExW(root.get(), W("v"), 0, c.type, memory.bytes(), c.size), ERROR_SUCCESS);
    EXPECT_EQ(Query(root.get(), W("v")).bytes, std::string(reinterpret_cast<const char*>(memory.bytes()), c.stored));
  }
}

TEST(Values, UnterminatedStringsGetANulWhereTheBufferHasRoom) {
  ScratchRoot root("appended-nul");
  // "ab" stored without a terminator, as string data and as binary data.
  const struct {
    DWORD type;
    DWORD capacity;
    bool appended;
  } cases[] = {
      {REG_SZ, 4, false},     {REG_SZ, 5, false},        {REG_SZ, 6, true},      {REG_EXPAND_SZ, 8, true},
      {REG_MULTI_SZ, 6, true}, {REG_BINARY, 6, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "type " << c.type << ", capacity " << c.capacity);
    Key key;
    ASSERT_EQ(Create(root.get(), W("k"), key), ERROR_SUCCESS);
    ASSERT_EQ(reg::RegSetValueExW(key.get(), W("v"), 0, c.type, Memory(Units(u"abcd")).bytes(), 4), ERROR_SUCCESS);
    for (const bool listing : {false, true}) {
      BYTE data[8];
      std::memset(data, 'Z', sizeof data);
      WCHAR name[4];
      DWORD size = c.capacity, length = 4;
      EXPECT_EQ(listing ? reg::RegEnumValueW(key.get(), 0, name, &length, nullptr, nullptr, data, &size)
                        : reg::RegQueryValueExW(key.get(), W("v"), nullptr, nullptr, data, &size),
                ERROR_SUCCESS);
      EXPECT_EQ(size, 4u);  // the NUL is not counted
      EXPECT_EQ(std::string(reinterpret_cast<char*>(data), 6),
                std::string("a\0b\0", 4) + (c.appended ? std::string(2, '\0') : std::string("ZZ")));
    }
    ASSERT_EQ(reg::SHDeleteKeyW(root.get(), W("k")), ERROR_SUCCESS);
  }
}

TEST(Values, QueriesAsWindowsAnswersThem) {
  ScratchRoot root("query-answers");
  ASSERT_EQ(SetBytes(root.get(), W("v"), REG_BINARY, "abc"), ERROR_SUCCESS);
  // A missing value: size 0, the type left alone.
  DWORD type = 77, size = 77;
  EXPECT_EQ(reg::RegQueryValueExW(root.get(), W("missing"), nullptr, &type, nullptr, &size), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(size, 0u);
  EXPECT_EQ(type, 77u);
  // Type and size in one variable: the capacity is read first, the size
  // written last.
  BYTE data[8];
  DWORD both = sizeof data;
  EXPECT_EQ(reg::RegQueryValueExW(root.get(), W("v"), nullptr, &both, data, &both), ERROR_SUCCESS);
  EXPECT_EQ(both, 3u);
  EXPECT_EQ(std::memcmp(data, "abc", 3), 0);
  WCHAR name[4];
  DWORD length = 4;
  both = sizeof data;
  EXPECT_EQ(reg::RegEnumValueW(root.get(), 0, name, &length, nullptr, &both, data, &both), ERROR_SUCCESS);
  EXPECT_EQ(both, 3u);
  // Data that cannot be read: a small number cast to a pointer.
  const auto* unreadable = reinterpret_cast<const BYTE*>(std::uintptr_t{1});
  EXPECT_EQ(reg::RegSetValueExW(root.get(), W("p"), 0, REG_BINARY, unreadable, 4), ERROR_NOACCESS);
  EXPECT_EQ(reg::RegSetValueExW(root.get(), W("p"), 0, REG_BINARY, unreadable, 0), ERROR_NOACCESS);
  EXPECT_EQ(Query(root.get(), W("p")).result, ERROR_FILE_NOT_FOUND);
}

}  // namespace
