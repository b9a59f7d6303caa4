// CMap<KEY, ARG_KEY, VALUE, ARG_VALUE> and CMapStringToString: the
// framework's hash maps, iterated in the framework's order.
//
//   CMapStringToString modules;
//   modules[CADTOOLS_WIDE("a")] = CADTOOLS_WIDE("1");
//   modules.SetAt(CADTOOLS_WIDE("ab"), CADTOOLS_WIDE("2"));
//   CString value;
//   modules.Lookup(CADTOOLS_WIDE("ab"), value);   // TRUE, value == "2"
//   POSITION pos = modules.GetStartPosition();
//   CString key;
//   while (pos != nullptr) modules.GetNextAssoc(pos, key, value);  // "ab", then "a"
//
// The iteration order matters: contact filters and module names are handed
// on to managed code in exactly the order the host's own maps give, so the
// table works as the host's does:
// - a chained hash table of 17 buckets, or the size given to InitHashTable
//   while the map is empty; it never rehashes by itself;
// - bucket = HashKey(key) % size; a new association goes to the head of
//   its bucket's chain;
// - iteration walks buckets 0..size-1, each chain from its head.
// HashKey for string keys is h = h * 33 + unit over every UTF-16 unit
// (unsigned 32-bit, wrapping). For integer, enum and pointer keys it is the
// framework's generic hash: the key cut to a 32-bit long k, then
// q = k / 127773, r = k % 127773, r = 16807 * r - 2836 * q, plus
// 2147483647 when negative. Other key types need their own
// `template <> UINT HashKey<ARG_KEY>(ARG_KEY key)`, as in the framework.
//
// Operations the framework asserts on (a null or stale POSITION,
// InitHashTable on a non-empty map or with size 0) raise
// CInvalidArgException*. Maps cannot be copied, as in the framework.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/exceptions.h>
#include <cadtools/compat/position.h>
#include <cadtools/compat/win_types.h>

#include <cstdint>
#include <deque>
#include <type_traits>
#include <vector>

template <class ARG_KEY>
inline UINT HashKey(ARG_KEY key) {
  using K = std::remove_cv_t<std::remove_reference_t<ARG_KEY>>;
  static_assert(std::is_integral_v<K> || std::is_enum_v<K> || std::is_pointer_v<K>,
                "CMap: this key type needs its own HashKey<ARG_KEY>");
  std::uint64_t bits;
  if constexpr (std::is_pointer_v<K>) {
    bits = reinterpret_cast<std::uintptr_t>(key);
  } else if constexpr (std::is_enum_v<K>) {
    bits = static_cast<std::uint64_t>(static_cast<std::underlying_type_t<K>>(key));
  } else {
    bits = static_cast<std::uint64_t>(key);
  }
  // A 32-bit long, as on Windows; no step below can overflow it.
  const auto k = static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
  std::int32_t r = 16807 * (k % 127773) - 2836 * (k / 127773);
  if (r < 0) r += 2147483647;
  return static_cast<UINT>(r);
}

namespace cadtools::detail {
inline UINT HashUnits(WStringView s) noexcept {
  UINT h = 0;
  for (const WCHAR c : s) h = h * 33U + static_cast<UINT>(c);
  return h;
}
}  // namespace cadtools::detail

template <>
inline UINT HashKey<const CString&>(const CString& key) {
  return cadtools::detail::HashUnits(key.View());
}
template <>
inline UINT HashKey<CString>(CString key) {
  return cadtools::detail::HashUnits(key.View());
}
template <>
inline UINT HashKey<const WCHAR*>(const WCHAR* key) {
  return key == nullptr ? 0 : cadtools::detail::HashUnits(key);
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
 public:
  // What PLookup returns: the stored key and its value.
  struct CPair {
    KEY key;
    VALUE value;
  };

  // nBlockSize is accepted for compatibility; storage grows as needed.
  explicit CMap(INT_PTR nBlockSize = 10) { static_cast<void>(nBlockSize); }
  CMap(const CMap&) = delete;
  CMap& operator=(const CMap&) = delete;
  ~CMap() override = default;

  INT_PTR GetCount() const noexcept { return m_count; }
  INT_PTR GetSize() const noexcept { return m_count; }
  BOOL IsEmpty() const noexcept { return m_count == 0; }
  UINT GetHashTableSize() const noexcept { return m_table_size; }

  // Sets the number of buckets; only while the map is empty. bAllocNow is
  // accepted for compatibility.
  void InitHashTable(UINT nHashSize, BOOL bAllocNow = TRUE) {
    static_cast<void>(bAllocNow);
    if (m_count != 0 || nHashSize == 0) cadtools::ThrowInvalidArg();
    m_table_size = nHashSize;
    m_buckets.clear();
  }

  BOOL Lookup(ARG_KEY key, VALUE& rValue) const {
    const Node* n = Find(key);
    if (n == nullptr) return FALSE;
    rValue = n->value;
    return TRUE;
  }
  CPair* PLookup(ARG_KEY key) { return const_cast<Node*>(Find(key)); }
  const CPair* PLookup(ARG_KEY key) const { return Find(key); }

  // The value for key, inserting a default one first when it is missing.
  VALUE& operator[](ARG_KEY key) {
    if (Node* n = const_cast<Node*>(Find(key))) return n->value;
    if (m_buckets.empty()) m_buckets.assign(m_table_size, nullptr);
    const UINT hash = HashKey<ARG_KEY>(key);
    Node* n = NewNode();
    n->key = key;
    n->hash = hash;
    Node*& head = m_buckets[hash % m_table_size];
    n->next = head;
    head = n;
    ++m_count;
    return n->value;
  }
  void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }

  BOOL RemoveKey(ARG_KEY key) {
    if (m_buckets.empty()) return FALSE;
    for (Node** link = &m_buckets[HashKey<ARG_KEY>(key) % m_table_size]; *link != nullptr;
         link = &(*link)->next) {
      Node* n = *link;
      if (n->key == key) {
        *link = n->next;
        Free(n);
        --m_count;
        return TRUE;
      }
    }
    return FALSE;
  }
  void RemoveAll() noexcept {
    m_buckets.clear();
    m_nodes.clear();
    m_free = nullptr;
    m_count = 0;
  }

  POSITION GetStartPosition() const noexcept { return m_count == 0 ? nullptr : BEFORE_START_POSITION; }

  // Copies the association at rNextPosition and moves it on; nullptr after
  // the last one.
  void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const {
    const Node* n = nullptr;
    if (rNextPosition == BEFORE_START_POSITION) {
      n = FirstFrom(0);
    } else {
      n = reinterpret_cast<const Node*>(rNextPosition);
    }
    if (n == nullptr || !n->in_use) cadtools::ThrowInvalidArg();
    const Node* next = n->next != nullptr ? n->next : FirstFrom(n->hash % m_table_size + 1);
    rNextPosition = reinterpret_cast<POSITION>(const_cast<Node*>(next));
    rKey = n->key;
    rValue = n->value;
  }

 private:
  struct Node : CPair {
    Node* next = nullptr;
    UINT hash = 0;
    bool in_use = false;
  };

  const Node* Find(ARG_KEY key) const {
    if (m_buckets.empty()) return nullptr;
    for (const Node* n = m_buckets[HashKey<ARG_KEY>(key) % m_table_size]; n != nullptr; n = n->next) {
      if (n->key == key) return n;
    }
    return nullptr;
  }

  const Node* FirstFrom(UINT bucket) const noexcept {
    for (; bucket < m_buckets.size(); ++bucket) {
      if (m_buckets[bucket] != nullptr) return m_buckets[bucket];
    }
    return nullptr;
  }

  // Nodes live in a deque, whose elements never move; removed ones are
  // kept on a free list for reuse.
  Node* NewNode() {
    Node* n = m_free;
    if (n != nullptr) {
      m_free = n->next;
    } else {
      n = &m_nodes.emplace_back();
    }
    n->in_use = true;
    return n;
  }
  void Free(Node* n) {
    n->value = VALUE();  // release what the value holds now, not at RemoveAll
    n->in_use = false;
    n->next = m_free;
    m_free = n;
  }

  std::vector<Node*> m_buckets;  // empty until the first insertion
  std::deque<Node> m_nodes;
  Node* m_free = nullptr;
  INT_PTR m_count = 0;
  UINT m_table_size = 17;
};

// Maps CString to CString; literals convert for every argument.
class CMapStringToString : public CMap<CString, const CString&, CString, const CString&> {
 public:
  using CMap::CMap;
};
