// cadtools::detail::UnitString: the storage of CString, UTF-16 units with
// room for 21 of them inside the object itself (56 bytes in all).
//
// The host passes CString by value everywhere, as its framework's shared
// strings make cheap; names, tags and numbers are short, so keeping them in
// the object makes such a copy a plain copy of a few bytes instead of an
// allocation, and a list of them stays compact. Longer texts live on the
// heap. The interface is the part of
// std::basic_string that CString needs, with the same meaning; positions
// past the end are the caller's to avoid, as there. Lengths are limited to
// INT_MAX units, CString's own limit; beyond it std::length_error is thrown.
#pragma once

#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace cadtools::detail {

class CADTOOLS_API UnitString {
 public:
  using View = std::basic_string_view<WCHAR>;
  static constexpr std::size_t npos = View::npos;
  static constexpr std::size_t kInlineUnits = 21;

  UnitString() noexcept : data_(inline_) {}
  // Copies and destruction of short strings are inline: they are what a
  // call that takes CString by value costs.
  UnitString(const UnitString& other) : data_(inline_) {
    if (other.OnHeap()) {
      assign(other);
    } else {
      std::memcpy(inline_, other.inline_, sizeof inline_);
      size_ = other.size_;
    }
  }
  UnitString(UnitString&& other) noexcept : data_(inline_) { *this = std::move(other); }
  UnitString& operator=(const UnitString& other);
  UnitString& operator=(UnitString&& other) noexcept;
  ~UnitString() {
    if (OnHeap()) Release();
  }

  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const WCHAR* c_str() const noexcept { return data_; }
  const WCHAR* data() const noexcept { return data_; }
  WCHAR* begin() noexcept { return data_; }
  WCHAR* end() noexcept { return data_ + size_; }
  const WCHAR* begin() const noexcept { return data_; }
  const WCHAR* end() const noexcept { return data_ + size_; }
  WCHAR& operator[](std::size_t i) noexcept { return data_[i]; }
  WCHAR operator[](std::size_t i) const noexcept { return data_[i]; }
  operator View() const noexcept { return View(data_, size_); }  // NOLINT: as std::basic_string

  void clear() noexcept { SetSize(0); }
  void reserve(std::size_t units);
  void resize(std::size_t units, WCHAR fill = 0);
  UnitString& assign(View units);
  UnitString& assign(std::size_t count, WCHAR ch);
  UnitString& append(View units);
  void push_back(WCHAR ch);
  void insert(std::size_t pos, View units);
  void erase(std::size_t pos, std::size_t count = npos) noexcept;
  void erase(WCHAR* first, WCHAR* last) noexcept {
    erase(static_cast<std::size_t>(first - data_), static_cast<std::size_t>(last - first));
  }

  std::size_t find(WCHAR ch, std::size_t pos = 0) const noexcept { return View(*this).find(ch, pos); }
  std::size_t find(View units, std::size_t pos = 0) const noexcept { return View(*this).find(units, pos); }
  std::size_t rfind(WCHAR ch) const noexcept { return View(*this).rfind(ch); }

 private:
  bool OnHeap() const noexcept { return data_ != inline_; }
  std::size_t Capacity() const noexcept { return OnHeap() ? heapCapacity_ : kInlineUnits; }
  void SetSize(std::size_t units) noexcept {
    size_ = static_cast<std::uint32_t>(units);
    data_[units] = 0;
  }
  // Moves to a buffer of at least `units` units, keeping the contents.
  void Grow(std::size_t units);
  void Release() noexcept;

  WCHAR* data_;  // inline_ or a heap block
  std::uint32_t size_ = 0;
  union {
    WCHAR inline_[kInlineUnits + 1] = {};
    std::uint32_t heapCapacity_;  // while on the heap: units, not counting the terminator
  };
};

}  // namespace cadtools::detail
