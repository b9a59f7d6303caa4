#include <cadtools/compat/carray.h>
#include <cadtools/compat/cmap.h>
#include <cadtools/compat/coblist.h>
#include <cadtools/compat/cstring_array.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "compat/compat_test_util.h"

#define W CADTOOLS_WIDE

namespace {

using cadtools::test::ThrowsInvalidArg;

TEST(CArrayTest, OutOfRangeRaisesInvalidArg) {
  CArray<int, int> a;
  a.Add(1);
  a.Add(2);
  CStringArray names;
  names.Add(W("Wall"));
  names.Add(CString(W("Door")));
  const std::pair<const char*, std::function<void()>> bad[] = {
      {"GetAt(-1)", [&] { a.GetAt(-1); }},
      {"GetAt(size)", [&] { a.GetAt(2); }},
      {"operator[]", [&] { static_cast<void>(a[5]); }},
      {"SetAt(size)", [&] { a.SetAt(2, 0); }},
      {"RemoveAt past end", [&] { a.RemoveAt(1, 2); }},
      {"InsertAt(-1)", [&] { a.InsertAt(-1, 0); }},
      {"SetSize(-1)", [&] { a.SetSize(-1); }},
      {"strings GetAt(size)", [&] { names.GetAt(2); }},
      {"strings SetAt(-1)", [&] { names.SetAt(-1, W("x")); }},
  };
  for (const auto& [name, f] : bad) EXPECT_TRUE(ThrowsInvalidArg(f)) << name;
  EXPECT_EQ(a.GetSize(), 2);
  EXPECT_EQ(names[1], W("Door"));
  EXPECT_EQ(names.Add(W("Roof")), 2);
  names.InsertAt(0, W("Floor"));
  EXPECT_EQ(names.GetAt(0), W("Floor"));
  const CObject* base = &names;  // a CObject, as the host stores it
  using StringCArray = CArray<CString, const CString&>;
  EXPECT_NE(dynamic_cast<const StringCArray*>(base), nullptr);
}

template <class Map, class K, class V>
std::vector<std::pair<K, V>> Walk(const Map& m) {
  std::vector<std::pair<K, V>> items;
  K key{};
  V value{};
  for (POSITION pos = m.GetStartPosition(); pos != nullptr;) {
    m.GetNextAssoc(pos, key, value);
    items.emplace_back(key, value);
  }
  return items;
}

TEST(CMapTest, IntegerKeyHash) {
  // k < 127773 gives 16807 * k; 127773 gives 16807 * 0 - 2836 * 1 + 2147483647;
  // 2^31 - 1 gives 16807 * 2836 - 2836 * 16807 = 0; -1 gives -16807 + 2147483647.
  const std::pair<std::int64_t, UINT> cases[] = {
      {1, 16807U},          {7, 117649U},         {127773, 2147480811U}, {2147483647, 0U},
      {-1, 2147466840U},    {INT32_MIN, 2147466840U}, {(std::int64_t{1} << 32) + 1, 16807U},  // cut to 32 bits
  };
  for (const auto& [key, hash] : cases) EXPECT_EQ(HashKey<std::int64_t>(key), hash) << key;
  EXPECT_EQ(HashKey<const CString&>(W("ab")), 97U * 33U + 98U);
}

TEST(CMapTest, IteratesLikeTheHost) {
  // 17 buckets; bucket = 16807 * k % 17 = 11 * k % 17 for small k:
  // 1->11 2->5 3->16 4->10 5->4 6->15 7->9 18->11 (after 1, so ahead of it).
  CMap<int, int, int, int> m;
  for (int k : {1, 2, 3, 4, 5, 6, 7, 18}) m[k] = 10 * k;
  using Items = std::vector<std::pair<int, int>>;
  EXPECT_EQ((Walk<decltype(m), int, int>(m)),
            (Items{{5, 50}, {2, 20}, {7, 70}, {4, 40}, {18, 180}, {1, 10}, {6, 60}, {3, 30}}));

  // Removing and re-adding moves a key to the head of its chain.
  EXPECT_TRUE(m.RemoveKey(18));
  EXPECT_FALSE(m.RemoveKey(18));
  m.SetAt(18, 1);
  m.RemoveKey(1);
  m.SetAt(1, 2);
  int v = 0;
  EXPECT_TRUE(m.Lookup(1, v));
  EXPECT_EQ(v, 2);
  EXPECT_FALSE(m.Lookup(99, v));
  EXPECT_EQ(m.GetCount(), 8);
  const auto items = Walk<decltype(m), int, int>(m);
  EXPECT_EQ(items[4], (std::pair{1, 2}));
  EXPECT_EQ(items[5], (std::pair{18, 1}));
}

TEST(CMapTest, StringKeysAndTableSize) {
  // h("a") = 97, h("b") = 98, h("ab") = 97 * 33 + 98 = 3299.
  // 17 buckets: a->12, b->13, ab->1.  7 buckets: a->6, b->0, ab->2.
  using Items = std::vector<std::pair<CString, CString>>;
  CMapStringToString m;
  m[W("a")] = W("1");
  m.SetAt(W("b"), W("2"));
  m.SetAt(W("ab"), W("3"));
  EXPECT_EQ((Walk<CMapStringToString, CString, CString>(m)),
            (Items{{W("ab"), W("3")}, {W("a"), W("1")}, {W("b"), W("2")}}));
  EXPECT_TRUE(ThrowsInvalidArg([&] { m.InitHashTable(7); }));  // not while it holds anything

  m.RemoveAll();
  EXPECT_TRUE(m.IsEmpty());
  EXPECT_EQ(m.GetStartPosition(), nullptr);
  m.InitHashTable(7);
  for (const WCHAR* k : {W("a"), W("b"), W("ab")}) m[k] = k;
  EXPECT_EQ((Walk<CMapStringToString, CString, CString>(m)),
            (Items{{W("b"), W("b")}, {W("ab"), W("ab")}, {W("a"), W("a")}}));
  ASSERT_NE(m.PLookup(W("ab")), nullptr);
  EXPECT_EQ(m.PLookup(W("ab"))->value, W("ab"));
  EXPECT_EQ(m.PLookup(W("zz")), nullptr);

  // A map keyed by pointer-to-text hashes the same units.
  CMap<CString, const WCHAR*, int, int> by_text;
  by_text[W("ab")] = 1;
  by_text[W("a")] = 2;
  using TextItems = std::vector<std::pair<CString, int>>;
  EXPECT_EQ((Walk<decltype(by_text), CString, int>(by_text)), (TextItems{{W("ab"), 1}, {W("a"), 2}}));

  POSITION bad = nullptr;
  CString k;
  CString v;
  EXPECT_TRUE(ThrowsInvalidArg([&] { m.GetNextAssoc(bad, k, v); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { m.InitHashTable(0); }));
}

struct Item : CObject {
  explicit Item(int v) : value(v) {}
  int value;
};

std::vector<int> Forward(const CObList& list) {
  std::vector<int> out;
  for (POSITION pos = list.GetHeadPosition(); pos != nullptr;) {
    out.push_back(static_cast<const Item*>(list.GetNext(pos))->value);
  }
  return out;
}

std::vector<int> Backward(const CObList& list) {
  std::vector<int> out;
  for (POSITION pos = list.GetTailPosition(); pos != nullptr;) {
    out.push_back(static_cast<const Item*>(list.GetPrev(pos))->value);
  }
  return out;
}

TEST(CObListTest, TraversalAndEditing) {
  Item i1(1), i2(2), i3(3), i4(4), i5(5);
  CObList list;
  const POSITION p2 = list.AddTail(&i2);
  list.AddHead(&i1);
  const POSITION p4 = list.InsertAfter(p2, &i4);
  list.InsertBefore(p4, &i3);
  list.InsertAfter(nullptr, &i5);  // a null position adds at the tail
  using V = std::vector<int>;
  EXPECT_EQ(Forward(list), (V{1, 2, 3, 4, 5}));
  EXPECT_EQ(Backward(list), (V{5, 4, 3, 2, 1}));

  EXPECT_EQ(list.Find(&i4), p4);
  EXPECT_EQ(list.Find(&i2, p2), nullptr);
  EXPECT_EQ(list.FindIndex(1), p2);
  EXPECT_EQ(list.FindIndex(5), nullptr);
  EXPECT_EQ(list.FindIndex(-1), nullptr);

  list.RemoveAt(p2);
  list.SetAt(p4, &i2);
  EXPECT_EQ(list.RemoveHead(), &i1);
  EXPECT_EQ(list.RemoveTail(), &i5);
  EXPECT_EQ(Forward(list), (V{3, 2}));
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_TRUE(ThrowsInvalidArg([&] { list.GetAt(p2); }));  // already removed

  list.InsertBefore(nullptr, &i1);  // reuses a freed node
  EXPECT_EQ(Forward(list), (V{1, 3, 2}));
  EXPECT_EQ(list.GetHead(), &i1);
  EXPECT_EQ(list.GetTail(), &i2);

  CObList other;
  other.AddTail(&i4);
  other.AddTail(&i5);
  list.AddTail(&other);  // the elements, not the list object
  list.AddHead(&list);
  EXPECT_EQ(Forward(list), (V{1, 3, 2, 4, 5, 1, 3, 2, 4, 5}));

  list.RemoveAll();
  EXPECT_TRUE(list.IsEmpty());
  POSITION none = nullptr;
  const std::pair<const char*, std::function<void()>> bad[] = {
      {"GetHead", [&] { list.GetHead(); }},
      {"GetTail", [&] { list.GetTail(); }},
      {"RemoveHead", [&] { list.RemoveHead(); }},
      {"RemoveTail", [&] { list.RemoveTail(); }},
      {"GetNext(null)", [&] { list.GetNext(none); }},
      {"RemoveAt(null)", [&] { list.RemoveAt(nullptr); }},
      {"GetAt(before start)", [&] { list.GetAt(BEFORE_START_POSITION); }},
  };
  for (const auto& [name, f] : bad) EXPECT_TRUE(ThrowsInvalidArg(f)) << name;
}

}  // namespace
