#include <cadtools/compat/unit_string.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <stdexcept>
#include <string>

namespace cadtools::detail {

namespace {

using Traits = std::char_traits<WCHAR>;

constexpr std::size_t kMaxUnits = INT_MAX;

void CheckLength(std::size_t units) {
  if (units > kMaxUnits) throw std::length_error("CString: longer than INT_MAX units");
}

WCHAR* Allocate(std::size_t units) { return std::allocator<WCHAR>().allocate(units + 1); }

}  // namespace

UnitString& UnitString::operator=(const UnitString& other) {
  if (this != &other) assign(other);
  return *this;
}

UnitString& UnitString::operator=(UnitString&& other) noexcept {
  if (this == &other) return *this;
  if (!other.OnHeap()) {
    // Inline contents always fit whatever buffer this string has.
    Traits::copy(data_, other.data_, other.size_ + 1U);
    size_ = other.size_;
  } else {
    Release();
    data_ = other.data_;
    size_ = other.size_;
    heapCapacity_ = other.heapCapacity_;
    other.data_ = other.inline_;
  }
  other.SetSize(0);
  return *this;
}

void UnitString::Release() noexcept {
  if (!OnHeap()) return;
  std::allocator<WCHAR>().deallocate(data_, heapCapacity_ + 1U);
  data_ = inline_;
  inline_[0] = 0;
}

void UnitString::Grow(std::size_t units) {
  if (units <= Capacity()) return;
  CheckLength(units);
  const std::size_t capacity = std::max(units, std::min(kMaxUnits, Capacity() * 2));
  WCHAR* grown = Allocate(capacity);
  Traits::copy(grown, data_, size_ + 1U);
  Release();
  data_ = grown;
  heapCapacity_ = static_cast<std::uint32_t>(capacity);
}

void UnitString::reserve(std::size_t units) { Grow(units); }

void UnitString::resize(std::size_t units, WCHAR fill) {
  Grow(units);
  if (units > size_) Traits::assign(data_ + size_, units - size_, fill);
  SetSize(units);
}

UnitString& UnitString::assign(View units) {
  if (units.size() > Capacity()) {
    // A larger text cannot lie inside this buffer: grow first, then copy.
    Grow(units.size());
  }
  Traits::move(data_, units.data(), units.size());
  SetSize(units.size());
  return *this;
}

UnitString& UnitString::assign(std::size_t count, WCHAR ch) {
  Grow(count);
  Traits::assign(data_, count, ch);
  SetSize(count);
  return *this;
}

UnitString& UnitString::append(View units) {
  const std::size_t total = size_ + units.size();
  if (total > Capacity()) {
    CheckLength(total);
    // `units` may lie inside this string: copy into the new buffer before
    // the old one goes.
    UnitString grown;
    grown.Grow(std::max(total, std::min(kMaxUnits, Capacity() * 2)));
    Traits::copy(grown.data_, data_, size_);
    Traits::copy(grown.data_ + size_, units.data(), units.size());
    grown.SetSize(total);
    return *this = std::move(grown);
  }
  Traits::move(data_ + size_, units.data(), units.size());
  SetSize(total);
  return *this;
}

void UnitString::push_back(WCHAR ch) {
  if (size_ == Capacity()) Grow(size_ + 1U);
  data_[size_] = ch;
  SetSize(size_ + 1U);
}

void UnitString::insert(std::size_t pos, View units) {
  const View self = *this;
  UnitString out;
  out.Grow(size_ + units.size());
  out.append(self.substr(0, pos)).append(units).append(self.substr(pos));
  *this = std::move(out);
}

void UnitString::erase(std::size_t pos, std::size_t count) noexcept {
  if (pos >= size_) return;
  count = std::min(count, size_ - pos);
  Traits::move(data_ + pos, data_ + pos + count, size_ - pos - count);
  SetSize(size_ - count);
}

}  // namespace cadtools::detail
