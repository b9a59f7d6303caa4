// CArray<TYPE, ARG_TYPE>: the framework's growable array.
//
//   CArray<WPt, WPt> pts;
//   pts.Add(WPt(1, 2));       // returns the new index, 0
//   pts.GetSize();            // 1
//   pts[0].x;                 // 1.0
//   pts.GetAt(5);             // throws CInvalidArgException*
//
// Indexes are INT_PTR as in MFC. Every index outside [0, GetSize()) raises
// the framework's invalid-argument exception instead of reading past the
// end, and so does a negative size. Growth that cannot be allocated raises
// CMemoryException, as MFC's arrays do.
#pragma once

#include <cadtools/compat/exceptions.h>
#include <cadtools/compat/win_types.h>

#include <cstddef>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
 public:
  CArray() = default;
  CArray(const CArray&) = default;
  CArray(CArray&&) noexcept = default;
  CArray& operator=(const CArray&) = default;
  CArray& operator=(CArray&&) noexcept = default;
  ~CArray() override = default;

  INT_PTR GetSize() const noexcept { return static_cast<INT_PTR>(m_items.size()); }
  INT_PTR GetCount() const noexcept { return GetSize(); }
  BOOL IsEmpty() const noexcept { return m_items.empty(); }
  INT_PTR GetUpperBound() const noexcept { return GetSize() - 1; }

  // Grows with default-constructed elements or cuts to nNewSize. nGrowBy
  // is accepted for compatibility; growth is amortised regardless.
  void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1) {
    static_cast<void>(nGrowBy);
    if (nNewSize < 0) cadtools::ThrowInvalidArg();
    Grow([&] { m_items.resize(static_cast<std::size_t>(nNewSize)); });
  }
  void FreeExtra() { m_items.shrink_to_fit(); }
  void RemoveAll() noexcept { m_items.clear(); }

  const TYPE& GetAt(INT_PTR nIndex) const { return m_items[Checked(nIndex)]; }
  TYPE& GetAt(INT_PTR nIndex) { return m_items[Checked(nIndex)]; }
  void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_items[Checked(nIndex)] = newElement; }
  TYPE& ElementAt(INT_PTR nIndex) { return m_items[Checked(nIndex)]; }
  const TYPE& ElementAt(INT_PTR nIndex) const { return m_items[Checked(nIndex)]; }
  const TYPE& operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
  TYPE& operator[](INT_PTR nIndex) { return GetAt(nIndex); }

  const TYPE* GetData() const noexcept { return m_items.data(); }
  TYPE* GetData() noexcept { return m_items.data(); }

  // Sets the element, growing the array first when nIndex is past the end.
  void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement) {
    if (nIndex < 0) cadtools::ThrowInvalidArg();
    if (nIndex >= GetSize()) SetSize(nIndex + 1);
    m_items[static_cast<std::size_t>(nIndex)] = newElement;
  }
  INT_PTR Add(ARG_TYPE newElement) {
    if (m_items.size() < m_items.capacity()) {
      m_items.push_back(newElement);  // cannot allocate, so cannot throw
    } else {
      Grow([&] { m_items.push_back(newElement); });
    }
    return GetUpperBound();
  }
  // Appends a copy of src; returns the index of its first element.
  INT_PTR Append(const CArray& src) {
    const INT_PTR first = GetSize();
    Grow([&] {
      if (&src == this) {
        const std::vector<TYPE> copy = m_items;
        m_items.insert(m_items.end(), copy.begin(), copy.end());
      } else {
        m_items.insert(m_items.end(), src.m_items.begin(), src.m_items.end());
      }
    });
    return first;
  }
  void Copy(const CArray& src) {
    if (&src != this) m_items = src.m_items;
  }
  // Inserts nCount copies at nIndex; an index past the end grows the array.
  void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1) {
    if (nIndex < 0 || nCount < 0) cadtools::ThrowInvalidArg();
    const TYPE value = newElement;  // may alias an element that moves
    if (nIndex >= GetSize()) SetSize(nIndex);
    Grow([&] { m_items.insert(m_items.begin() + nIndex, static_cast<std::size_t>(nCount), value); });
  }
  void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1) {
    if (nIndex < 0 || nCount < 0 || nCount > GetSize() - nIndex) cadtools::ThrowInvalidArg();
    m_items.erase(m_items.begin() + nIndex, m_items.begin() + nIndex + nCount);
  }

  // Range-for support; not part of MFC's interface but harmless.
  auto begin() noexcept { return m_items.begin(); }
  auto end() noexcept { return m_items.end(); }
  auto begin() const noexcept { return m_items.begin(); }
  auto end() const noexcept { return m_items.end(); }

 private:
  // Runs a growing operation, reporting exhaustion as the framework does.
  // Kept out of line: exception handling inside a caller's loop (Add in a
  // sampling loop) would make the compiler keep the loop's values in memory.
  template <class F>
  [[gnu::noinline]] static void Grow(F&& grow) {
    try {
      grow();
    } catch (const std::bad_alloc&) {
      cadtools::ThrowMemory();
    } catch (const std::length_error&) {
      cadtools::ThrowMemory();
    }
  }

  std::size_t Checked(INT_PTR nIndex) const {
    if (nIndex < 0 || nIndex >= GetSize()) cadtools::ThrowInvalidArg();
    return static_cast<std::size_t>(nIndex);
  }

  std::vector<TYPE> m_items;
};
