// Opening, creating, closing and deleting keys: result codes, paths,
// dispositions, case and handles whose key was deleted.
#include "conformance_util.h"

namespace {

using namespace cadtools::testing;

TEST(KeyPaths, OpenAndCreateForms) {
  ScratchRoot root("paths");
  Key made;
  ASSERT_EQ(Create(root.get(), W("Alpha\\Beta"), made), ERROR_SUCCESS);
  const WStr longest(255, static_cast<WCHAR>('k'));  // the longest key name there may be
  const struct {
    const WCHAR* path;
    LONG open;
  } cases[] = {
      {W("Alpha"), ERROR_SUCCESS},           {W("Alpha\\Beta"), ERROR_SUCCESS},
      {W("alpha\\BETA"), ERROR_SUCCESS},     {W("Alpha\\Beta\\"), ERROR_SUCCESS},   // trailing separators
      {W("Alpha\\\\Beta"), ERROR_SUCCESS},   {W("Alpha\\\\"), ERROR_SUCCESS},       // doubled ones
      {W(""), ERROR_SUCCESS},                {W("\\Alpha"), ERROR_BAD_PATHNAME},
      {W("\\"), ERROR_BAD_PATHNAME},         {W("Missing"), ERROR_FILE_NOT_FOUND},
      {W("Alpha\\Missing"), ERROR_FILE_NOT_FOUND}, {W("Alpha\\."), ERROR_FILE_NOT_FOUND},  // "." is a name
      {longest.c_str(), ERROR_FILE_NOT_FOUND},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "path #" << (&c - cases));
    Key key;
    EXPECT_EQ(Open(root.get(), c.path, key), c.open);
    EXPECT_EQ(key.get() == nullptr, c.open != ERROR_SUCCESS);
    Key created;
    EXPECT_EQ(Create(root.get(), c.path, created), c.open == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : c.open);
  }
  Key key;
  EXPECT_EQ(Open(root.get(), W("Alpha\\."), key), ERROR_SUCCESS);  // created above
  EXPECT_EQ(reg::RegOpenKeyExW(root.get(), nullptr, 0, KEY_READ, key.out()), ERROR_SUCCESS);
  EXPECT_EQ(SubkeyAt(root.get(), 1).name, longest);  // Alpha, k..., Missing
}

TEST(KeyPaths, CreateMakesIntermediateKeysAndTellsWhatItDid) {
  ScratchRoot root("create");
  const struct {
    const WCHAR* path;
    DWORD disposition;
  } steps[] = {
      {W("P\\Q\\R"), REG_CREATED_NEW_KEY}, {W("P"), REG_OPENED_EXISTING_KEY}, {W("p\\q"), REG_OPENED_EXISTING_KEY},
      {W("P\\Q\\R"), REG_OPENED_EXISTING_KEY}, {W("P\\Q\\S"), REG_CREATED_NEW_KEY},
  };
  for (const auto& step : steps) {
    Key key;
    DWORD disposition = 0;
    ASSERT_EQ(Create(root.get(), step.path, key, KEY_ALL_ACCESS, &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, step.disposition);
  }
  Key q;
  ASSERT_EQ(Open(root.get(), W("P\\Q"), q), ERROR_SUCCESS);
  EXPECT_EQ(SubkeyAt(q.get(), 0).name, W("R"));
  EXPECT_EQ(SubkeyAt(q.get(), 1).name, W("S"));
}

TEST(KeyNames, CompareWithoutCaseAndKeepTheirs) {
  ScratchRoot root("case");
  const WCHAR surrogate = static_cast<WCHAR>(0xD800);
  const struct {
    WStr created, other;
    bool same;
  } cases[] = {
      {W("Alpha"), W("ALPHA"), true},
      {W("\u00E9t\u00E9"), W("\u00C9T\u00C9"), true},  // é / É
      {W("\uFF41"), W("\uFF21"), true},                 // fullwidth a / A
      {W("\u0436"), W("\u0416"), true},                 // Cyrillic zhe
      {W("\u00DF"), W("\u1E9E"), false},                // ß has no one-unit capital
      {WStr(W("a")) + surrogate + W("b"), WStr(W("A")) + surrogate + W("B"), true},  // a lone surrogate is a unit
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "name #" << (&c - cases));
    Key parent, first, second;
    ASSERT_EQ(Create(root.get(), WStr(W("k")) + W("\\") + c.created, first), ERROR_SUCCESS);
    DWORD disposition = 0;
    ASSERT_EQ(Create(root.get(), WStr(W("K")) + W("\\") + c.other, second, KEY_ALL_ACCESS, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, c.same ? DWORD{REG_OPENED_EXISTING_KEY} : DWORD{REG_CREATED_NEW_KEY});
    ASSERT_EQ(Open(root.get(), W("k"), parent), ERROR_SUCCESS);
    // One key keeps the name it was created with; two keys are listed both.
    if (c.same) {
      EXPECT_EQ(SubkeyAt(parent.get(), 0).name, c.created);
    }
    EXPECT_EQ(SubkeyAt(parent.get(), c.same ? 1 : 2).result, ERROR_NO_MORE_ITEMS);
    ASSERT_EQ(reg::SHDeleteKeyW(root.get(), W("k")), ERROR_SUCCESS);
  }
}

TEST(Handles, ResultCodesOfBadHandlesAndArguments) {
  ScratchRoot root("handles");
  Key key;
  ASSERT_EQ(Create(root.get(), W("h"), key), ERROR_SUCCESS);
  HKEY closed = nullptr;
  ASSERT_EQ(reg::RegOpenKeyExW(root.get(), W("h"), 0, KEY_READ, &closed), ERROR_SUCCESS);
  ASSERT_EQ(reg::RegCloseKey(closed), ERROR_SUCCESS);
  HKEY out = nullptr;
  DWORD reserved = 0;
  const struct {
    const char* call;
    LONG result, expected;
  } cases[] = {
      {"close null", reg::RegCloseKey(nullptr), ERROR_INVALID_HANDLE},
      {"close hive", reg::RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS},
      {"close twice", reg::RegCloseKey(closed), ERROR_INVALID_HANDLE},
      {"query closed", reg::RegQueryValueExW(closed, W("v"), nullptr, nullptr, nullptr, nullptr), ERROR_INVALID_HANDLE},
      {"open below null", reg::RegOpenKeyExW(nullptr, W("h"), 0, KEY_READ, &out), ERROR_INVALID_HANDLE},
      {"open without result", reg::RegOpenKeyExW(root.get(), W("h"), 0, KEY_READ, nullptr), ERROR_INVALID_PARAMETER},
      {"create reserved", reg::RegCreateKeyExW(root.get(), W("x"), 1, nullptr, 0, KEY_READ, nullptr, &out, nullptr),
       ERROR_INVALID_PARAMETER},
      {"query reserved", reg::RegQueryValueExW(key.get(), W("v"), &reserved, nullptr, nullptr, nullptr),
       ERROR_INVALID_PARAMETER},
      {"delete below null", reg::SHDeleteKeyW(nullptr, W("h")), ERROR_INVALID_HANDLE},
  };
  for (const auto& c : cases) EXPECT_EQ(c.result, c.expected) << c.call;
  // The empty subkey opens a hive as itself, any other key as a new handle.
  ASSERT_EQ(reg::RegOpenKeyExW(HKEY_CURRENT_USER, W(""), 0, KEY_READ, &out), ERROR_SUCCESS);
  EXPECT_EQ(out, HKEY_CURRENT_USER);
  Key again;
  ASSERT_EQ(Open(key.get(), W(""), again, KEY_ALL_ACCESS), ERROR_SUCCESS);
  key.Reset();
  EXPECT_EQ(SetBytes(again.get(), W("v"), REG_BINARY, "x"), ERROR_SUCCESS);
}

TEST(Handles, KeyDeletedWhileOpen) {
  ScratchRoot root("deleted");
  Key doomed, child;
  ASSERT_EQ(Create(root.get(), W("d\\c"), child), ERROR_SUCCESS);
  ASSERT_EQ(Create(root.get(), W("d"), doomed), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(doomed.get(), W("v"), REG_BINARY, "x"), ERROR_SUCCESS);
  ASSERT_EQ(reg::SHDeleteKeyW(root.get(), W("d")), ERROR_SUCCESS);
  Key recreated;
  ASSERT_EQ(Create(root.get(), W("d\\c"), recreated), ERROR_SUCCESS);  // a new key: old handles stay dead
  const HKEY h = doomed.get();
  HKEY out = nullptr;
  const struct {
    const char* call;
    LONG result;
  } cases[] = {
      {"query", reg::RegQueryValueExW(h, W("v"), nullptr, nullptr, nullptr, nullptr)},
      {"set", SetBytes(h, W("v"), REG_BINARY, "y")},
      {"delete value", reg::RegDeleteValueW(h, W("v"))},
      {"enum keys", SubkeyAt(h, 0).result},
      {"enum values", ValueAt(h, 0).result},
      {"info", reg::RegQueryInfoKeyW(h, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr, nullptr)},
      {"open below", reg::RegOpenKeyExW(h, W("c"), 0, KEY_READ, &out)},
      {"open itself", reg::RegOpenKeyExW(h, W(""), 0, KEY_READ, &out)},
      {"create below", reg::RegCreateKeyExW(h, W("n"), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &out, nullptr)},
      {"delete below", reg::SHDeleteKeyW(h, W("c"))},
      {"child query", reg::RegQueryValueExW(child.get(), W("v"), nullptr, nullptr, nullptr, nullptr)},
  };
  for (const auto& c : cases) EXPECT_EQ(c.result, ERROR_KEY_DELETED) << c.call;
  EXPECT_EQ(Query(recreated.get(), W("v")).result, ERROR_FILE_NOT_FOUND);
}

TEST(SHDeleteKeyW, RemovesTreesAndEmptiesKeys) {
  ScratchRoot root("tree");
  const WCHAR* tree[] = {W("T\\a\\b"), W("T\\a\\c"), W("T\\d"), W("U\\a"), W("Te")};
  for (const WCHAR* path : tree) {
    Key key;
    ASSERT_EQ(Create(root.get(), path, key), ERROR_SUCCESS);
    ASSERT_EQ(SetBytes(key.get(), W("v"), REG_DWORD, "1234"), ERROR_SUCCESS);
  }
  const struct {
    const WCHAR* sub;
    LONG result;
    const WCHAR* gone;   // no longer there afterwards
    const WCHAR* kept;   // still there
  } steps[] = {
      {W("T\\a\\"), ERROR_SUCCESS, W("T\\a\\b"), W("T\\d")},
      {W("T"), ERROR_SUCCESS, W("T"), W("Te")},  // a sibling that shares the prefix stays
      {W("T"), ERROR_FILE_NOT_FOUND, W("T"), W("U\\a")},
      {W("\\U"), ERROR_BAD_PATHNAME, W("T"), W("U\\a")},
      {W("Nope\\Deeper"), ERROR_FILE_NOT_FOUND, W("Nope"), W("U")},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(::testing::Message() << "step #" << (&step - steps));
    EXPECT_EQ(reg::SHDeleteKeyW(root.get(), step.sub), step.result);
    Key probe;
    EXPECT_EQ(Open(root.get(), step.gone, probe), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Open(root.get(), step.kept, probe), ERROR_SUCCESS);
  }
  // An empty subkey empties the key and keeps it.
  Key u;
  ASSERT_EQ(Open(root.get(), W("U"), u, KEY_ALL_ACCESS), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(u.get(), W("w"), REG_BINARY, "x"), ERROR_SUCCESS);
  EXPECT_EQ(reg::SHDeleteKeyW(u.get(), nullptr), ERROR_SUCCESS);
  EXPECT_EQ(SubkeyAt(u.get(), 0).result, ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(Query(u.get(), W("w")).result, ERROR_FILE_NOT_FOUND);
  Key probe;
  EXPECT_EQ(Open(root.get(), W("U"), probe), ERROR_SUCCESS);
}

TEST(Hives, LocalMachineKeysReadBackAndDelete) {
  ScratchRoot root("machine", HKEY_LOCAL_MACHINE);
  Key key;
  ASSERT_EQ(Create(root.get(), W("Defaults"), key), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(key.get(), W("Colour"), REG_DWORD, std::string("\x07\0\0\0", 4)), ERROR_SUCCESS);
  Key reader;
  ASSERT_EQ(Open(HKEY_LOCAL_MACHINE, root.scratch().Below(W("defaults")), reader), ERROR_SUCCESS);
  EXPECT_EQ(Query(reader.get(), W("colour")).bytes, std::string("\x07\0\0\0", 4));
  EXPECT_EQ(SetBytes(reader.get(), W("Colour"), REG_DWORD, "abcd"), ERROR_ACCESS_DENIED);  // a KEY_READ handle
  Key user;
  EXPECT_EQ(Open(HKEY_CURRENT_USER, root.scratch().Below(W("Defaults")), user), ERROR_FILE_NOT_FOUND);
}

TEST(KeyClasses, KeptAndReported) {
  ScratchRoot root("classes");
  Key k, sub, deep;
  ASSERT_EQ(CreateWith(root.get(), W("k"), k, REG_OPTION_NON_VOLATILE, W("myclass")), ERROR_SUCCESS);
  ASSERT_EQ(CreateWith(k.get(), W("sub"), sub, REG_OPTION_NON_VOLATILE, W("subclass12")), ERROR_SUCCESS);
  ASSERT_EQ(CreateWith(k.get(), W("i\\j"), deep, REG_OPTION_NON_VOLATILE, W("c")), ERROR_SUCCESS);
  const auto class_of = [](HKEY key) {
    WCHAR text[32];
    DWORD length = 32;
    const LONG result = reg::RegQueryInfoKeyW(key, text, &length, nullptr, nullptr, nullptr, nullptr, nullptr,
                                              nullptr, nullptr, nullptr, nullptr);
    return result == ERROR_SUCCESS ? WStr(text, length) : W("<error>");
  };
  EXPECT_EQ(class_of(k.get()), W("myclass"));
  EXPECT_EQ(class_of(deep.get()), W("c"));
  Key between;
  ASSERT_EQ(Open(k.get(), W("i"), between), ERROR_SUCCESS);
  EXPECT_EQ(class_of(between.get()), W("c"));  // keys made on the way get it too
  // The longest class of the subkeys, below k and below the scratch key.
  for (const auto& [key, longest] : {std::pair{k.get(), 10u}, std::pair{root.get(), 7u}}) {
    DWORD max_class = 0;
    ASSERT_EQ(reg::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, &max_class, nullptr, nullptr,
                                    nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(max_class, longest);
  }
  // Class buffers of RegQueryInfoKeyW: result, length afterwards, and
  // whether the buffer was written.
  const struct {
    bool buffer, length;
    DWORD capacity;
    LONG result;
    DWORD length_after;
    bool written;
  } cases[] = {
      {true, true, 8, ERROR_SUCCESS, 7, true},
      {true, true, 7, ERROR_INSUFFICIENT_BUFFER, 7, false},  // no room for the NUL
      {true, true, 3, ERROR_INSUFFICIENT_BUFFER, 7, false},
      {false, true, 0, ERROR_SUCCESS, 7, false},
      {true, false, 0, ERROR_INVALID_PARAMETER, 0, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "capacity " << c.capacity << (c.buffer ? "" : ", no buffer")
                                      << (c.length ? "" : ", no length"));
    WCHAR text[16];
    for (WCHAR& unit : text) unit = 0x5555;
    DWORD length = c.capacity, subkeys = 99;
    EXPECT_EQ(reg::RegQueryInfoKeyW(k.get(), c.buffer ? text : nullptr, c.length ? &length : nullptr, nullptr,
                                    &subkeys, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
              c.result);
    if (c.length) {
      EXPECT_EQ(length, c.length_after);
    }
    EXPECT_EQ(text[0] != 0x5555, c.written);
    if (c.result != ERROR_INVALID_PARAMETER) {
      EXPECT_EQ(subkeys, 2u);
    }
  }
  // RegEnumKeyExW gives the class with the name; too small a class buffer
  // leaves both buffers and lengths alone.
  WCHAR name[16], text[16];
  DWORD name_length = 16, class_length = 16;
  ASSERT_EQ(reg::RegEnumKeyExW(k.get(), 1, name, &name_length, nullptr, text, &class_length, nullptr), ERROR_SUCCESS);
  EXPECT_EQ(WStr(name, name_length), W("sub"));
  EXPECT_EQ(WStr(text, class_length), W("subclass12"));
  for (WCHAR& unit : text) unit = 0x5555;
  name_length = 16;
  class_length = 3;
  EXPECT_EQ(reg::RegEnumKeyExW(k.get(), 1, name, &name_length, nullptr, text, &class_length, nullptr),
            ERROR_MORE_DATA);
  EXPECT_EQ(name_length, 16u);
  EXPECT_EQ(class_length, 3u);
  EXPECT_EQ(text[0], 0x5555);
  class_length = 0;
  ASSERT_EQ(reg::RegEnumKeyExW(k.get(), 1, name, &name_length, nullptr, nullptr, &class_length, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(class_length, 10u);
}

TEST(KeyOptions, VolatileKeysTakeOnlyVolatileChildren) {
  ScratchRoot root("volatile");
  const struct {
    const WCHAR* path;
    DWORD options;
    LONG result;
  } steps[] = {
      {W("v"), REG_OPTION_VOLATILE, ERROR_SUCCESS},
      {W("v\\kept"), REG_OPTION_NON_VOLATILE, ERROR_CHILD_MUST_BE_VOLATILE},
      {W("v\\a\\b"), REG_OPTION_NON_VOLATILE, ERROR_CHILD_MUST_BE_VOLATILE},
      {W("v\\vv"), REG_OPTION_VOLATILE, ERROR_SUCCESS},
      {W("v\\vv"), REG_OPTION_NON_VOLATILE, ERROR_SUCCESS},  // it exists: opened
      {W("w\\x\\y"), REG_OPTION_VOLATILE, ERROR_SUCCESS},    // every key made is volatile
      {W("w\\x\\z"), REG_OPTION_NON_VOLATILE, ERROR_CHILD_MUST_BE_VOLATILE},
      {W("w"), REG_OPTION_NON_VOLATILE, ERROR_SUCCESS},
      {W("kept\\v"), REG_OPTION_VOLATILE, ERROR_SUCCESS},    // a volatile key below a kept one
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(::testing::Message() << "step #" << (&step - steps));
    Key key;
    EXPECT_EQ(CreateWith(root.get(), step.path, key, step.options), step.result);
    EXPECT_EQ(key.get() == nullptr, step.result != ERROR_SUCCESS);
  }
  Key probe;
  EXPECT_EQ(Open(root.get(), W("v\\a"), probe), ERROR_FILE_NOT_FOUND);  // a refusal makes nothing
  ASSERT_EQ(Open(root.get(), W("v\\vv"), probe, KEY_ALL_ACCESS), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(probe.get(), W("x"), REG_BINARY, "1"), ERROR_SUCCESS);
  EXPECT_EQ(Query(probe.get(), W("x")).bytes, "1");
}

TEST(Handles, PredefinedHandlesCountByTheirLow32Bits) {
  ScratchRoot root("low-bits");
  std::vector<HKEY> spellings = {reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001u))};
  if constexpr (sizeof(ULONG_PTR) == 8) {
    spellings.push_back(reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x1234567880000001ull)));
  }
  for (const HKEY current_user : spellings) {
    Key key;
    EXPECT_EQ(Open(current_user, root.scratch().path(), key), ERROR_SUCCESS);
    EXPECT_EQ(reg::RegCloseKey(current_user), ERROR_SUCCESS);
  }
}

TEST(Hives, TheCurrentUsersSidBelowHkeyUsersIsTheUsersHive) {
  ScratchRoot root("users");
  ASSERT_EQ(SetBytes(root.get(), W("v"), REG_BINARY, "u"), ERROR_SUCCESS);
  const WStr sid = OwnSid();
  ASSERT_FALSE(sid.empty());
  Key key;
  ASSERT_EQ(Open(HKEY_USERS, sid + W("\\") + root.scratch().path(), key), ERROR_SUCCESS);
  EXPECT_EQ(Query(key.get(), W("v")).bytes, "u");
  bool listed = false;
  for (DWORD i = 0;; ++i) {
    const Listed sub = SubkeyAt(HKEY_USERS, i);
    if (sub.result != ERROR_SUCCESS) break;
    listed = listed || sub.name == sid;
  }
  EXPECT_TRUE(listed);
}

}  // namespace
