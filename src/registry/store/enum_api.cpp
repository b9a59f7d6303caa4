// RegEnumKeyExW, RegEnumValueW and RegQueryInfoKeyW off Windows.
#include <cadtools/registry/registry_api.h>

#include "registry/store/clock.h"
#include "registry/store/store.h"
#include "registry/store/string_data.h"
#include "registry/store/views.h"

#include <algorithm>
#include <cstring>

namespace cadtools::registry {

using namespace store;

namespace {

FILETIME FileTimeOf(std::int64_t count) noexcept {
  const auto bits = static_cast<std::uint64_t>(count);
  return FILETIME{static_cast<DWORD>(bits & 0xFFFFFFFFu), static_cast<DWORD>(bits >> 32)};
}

// Copies a stored name with its NUL when it fits the capacity (which
// counts the NUL) and sets the length without it; otherwise too_small
// with buffer and length untouched.
LONG DeliverName(std::string_view bytes, LPWSTR name, LPDWORD name_length, LONG too_small = ERROR_MORE_DATA) noexcept {
  const DWORD units = NameUnits(bytes);
  if (units >= *name_length) return too_small;
  DecodeName(bytes, name);
  name[units] = 0;
  *name_length = units;
  return ERROR_SUCCESS;
}

// A key's class for RegEnumKeyExW, which has room for it: the length
// alone, or the class too when a buffer is given.
void DeliverClass(std::string_view bytes, LPWSTR class_name, LPDWORD class_length) noexcept {
  if (class_length == nullptr) return;
  if (class_name == nullptr) {
    *class_length = NameUnits(bytes);
    return;
  }
  DeliverName(bytes, class_name, class_length);
}

// The subkey at index of a handle: name, class, last write.
struct Subkey {
  std::string name, class_name;
  std::int64_t written = 0;
};

LONG SubkeyAt(Session& session, const Handle& handle, DWORD index, Subkey& subkey) {
  if (HasMergedChildren(handle)) {
    std::vector<Child> children;
    const LONG listed = MergedChildren(session, handle, children);
    if (listed != ERROR_SUCCESS) return listed;
    if (index >= children.size()) return ERROR_NO_MORE_ITEMS;
    Child& child = children[index];
    subkey = {std::move(child.name), std::move(child.class_name), child.written};
    return ERROR_SUCCESS;
  }
  Database& db = session.hive(handle).db();
  {
    Query query(db, Sql::kEnumKey);
    query.Bind(1, handle.id);
    query.Bind(2, static_cast<std::int64_t>(index));
    if (query.Row()) {
      subkey = {std::string(query.Blob(0)), std::string(query.Blob(2)), query.Int(1)};
      return ERROR_SUCCESS;
    }
    if (query.failed()) return kStoreFailed;
  }
  return NothingFound(db, handle.id, ERROR_NO_MORE_ITEMS);
}

// What RegQueryInfoKeyW says about the subkeys of a key.
struct ChildInfo {
  std::int64_t count = 0, longest_name = 0, longest_class = 0;  // name and class in bytes
};

LONG ChildInfoOf(Session& session, const Handle& handle, ChildInfo& info) {
  if (HasMergedChildren(handle)) {
    std::vector<Child> children;
    const LONG listed = MergedChildren(session, handle, children);
    info.count = static_cast<std::int64_t>(children.size());
    for (const Child& child : children) {
      info.longest_name = std::max(info.longest_name, static_cast<std::int64_t>(child.name.size()));
      info.longest_class = std::max(info.longest_class, static_cast<std::int64_t>(child.class_name.size()));
    }
    return listed;
  }
  Query children(session.hive(handle).db(), Sql::kChildInfo);
  children.Bind(1, handle.id);
  if (!children.Row()) return kStoreFailed;
  info = {children.Int(0), children.Int(1), children.Int(3)};
  return ERROR_SUCCESS;
}

// Runs op on the handle's key; HKEY_CLASSES_ROOT while no store has
// Software\Classes has no key to run it on, and answers `missing`.
template <typename Op>
LONG OnKeyOrMissing(Session& session, Handle& handle, LONG missing, Op&& op) {
  if (handle.missing) return missing;
  return OnKey(session, handle, std::forward<Op>(op));
}

}  // namespace

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved,
                      LPWSTR class_name, LPDWORD class_length, PFILETIME last_write) noexcept {
  if (name == nullptr || name_length == nullptr || reserved != nullptr) return ERROR_INVALID_PARAMETER;
  if (AnyUnusable(name, name_length, class_name, class_length, last_write)) return ERROR_NOACCESS;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    if ((handle->access & KEY_ENUMERATE_SUB_KEYS) == 0) return ERROR_ACCESS_DENIED;
    Subkey subkey;
    const auto deliver = [&]() -> LONG {
      // Buffers and lengths are untouched unless both the name and the
      // class fit.
      if (class_name != nullptr && class_length != nullptr && NameUnits(subkey.class_name) >= *class_length) {
        return ERROR_MORE_DATA;
      }
      const LONG named = DeliverName(subkey.name, name, name_length);
      if (named != ERROR_SUCCESS) return named;
      DeliverClass(subkey.class_name, class_name, class_length);
      if (last_write != nullptr) *last_write = FileTimeOf(subkey.written);
      return ERROR_SUCCESS;
    };
    LONG result = ERROR_SUCCESS;
    if (handle->missing) {
      result = SubkeyAt(session, *handle, index, subkey);
    } else {
      result = OnKey(session, *handle, [&](std::int64_t) { return SubkeyAt(session, *handle, index, subkey); });
    }
    if (result == ERROR_SUCCESS) result = deliver();
    return Answer(result, CallKind::kRead);
  });
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD data_size) noexcept {
  if (name == nullptr || name_length == nullptr || reserved != nullptr ||
      (data != nullptr && data_size == nullptr)) {
    return ERROR_INVALID_PARAMETER;
  }
  if (AnyUnusable(name, name_length, type, data, data_size)) return ERROR_NOACCESS;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    if ((handle->access & KEY_QUERY_VALUE) == 0) return ERROR_ACCESS_DENIED;
    const Capacity capacity(data, data_size);
    Database& db = session.hive(*handle).db();
    const LONG result = OnKeyOrMissing(session, *handle, ERROR_NO_MORE_ITEMS, [&](std::int64_t id) -> LONG {
      {
        Query query(db, Sql::kEnumValue);
        query.Bind(1, id);
        query.Bind(2, static_cast<std::int64_t>(index));
        if (query.Row()) {
          // Type and size come back even when the name does not fit, so
          // that a caller can size both buffers from one call.
          const auto stored_type = static_cast<DWORD>(query.Int(1));
          if (type != nullptr) *type = stored_type;
          const LONG named = DeliverName(query.Blob(0), name, name_length);
          const LONG delivered = capacity.Deliver(stored_type, query.Blob(2), named == ERROR_SUCCESS ? data : nullptr,
                                                  data_size);
          return named != ERROR_SUCCESS ? named : delivered;
        }
        if (query.failed()) return kStoreFailed;
      }
      return NothingFound(db, id, ERROR_NO_MORE_ITEMS);
    });
    return Answer(result, CallKind::kRead);
  });
}

LSTATUS RegQueryInfoKeyW(HKEY key, LPWSTR class_name, LPDWORD class_length, LPDWORD reserved, LPDWORD sub_keys,
                         LPDWORD max_sub_key_length, LPDWORD max_class_length, LPDWORD values,
                         LPDWORD max_value_name_length, LPDWORD max_value_size, LPDWORD security_descriptor_size,
                         PFILETIME last_write) noexcept {
  if (reserved != nullptr || (class_name != nullptr && class_length == nullptr)) return ERROR_INVALID_PARAMETER;
  if (AnyUnusable(class_name, class_length, sub_keys, max_sub_key_length, max_class_length, values,
                  max_value_name_length, max_value_size, security_descriptor_size, last_write)) {
    return ERROR_NOACCESS;
  }
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    // Windows asks for KEY_QUERY_VALUE here (wine does not check).
    if ((handle->access & KEY_QUERY_VALUE) == 0) return ERROR_ACCESS_DENIED;
    Database& db = session.hive(*handle).db();
    std::int64_t written = 0, value_count = 0, longest_value_name = 0, longest_data = 0;
    std::string own_class;
    const LONG result = OnKeyOrMissing(session, *handle, ERROR_SUCCESS, [&](std::int64_t id) -> LONG {
      {
        Query self(db, Sql::kKeyState);
        self.Bind(1, id);
        if (!self.Row()) return self.failed() ? kStoreFailed : kKeyGone;
        written = self.Int(0);
        own_class = self.Blob(2);
      }
      Query items(db, Sql::kValueInfo);
      items.Bind(1, id);
      if (!items.Row()) return kStoreFailed;
      value_count = items.Int(0);
      longest_value_name = items.Int(1);
      longest_data = items.Int(2);
      written = std::max(written, items.Int(3));
      return ERROR_SUCCESS;
    });
    ChildInfo children;
    LONG answer = result == ERROR_SUCCESS ? ChildInfoOf(session, *handle, children) : result;
    answer = Answer(answer, CallKind::kRead);
    if (answer != ERROR_SUCCESS) return answer;
    // A class buffer too small for the class and its NUL fails the call
    // with the buffer untouched and the length it needs; the other
    // answers are given all the same.
    LONG classed = ERROR_SUCCESS;
    if (class_length != nullptr) {
      const DWORD capacity = *class_length;
      *class_length = NameUnits(own_class);
      if (class_name != nullptr && NameUnits(own_class) >= capacity) {
        classed = ERROR_INSUFFICIENT_BUFFER;
      } else if (class_name != nullptr) {
        DecodeName(own_class, class_name);
        class_name[NameUnits(own_class)] = 0;
      }
    }
    if (sub_keys != nullptr) *sub_keys = static_cast<DWORD>(children.count);
    if (max_sub_key_length != nullptr) *max_sub_key_length = static_cast<DWORD>(children.longest_name / 2);
    if (max_class_length != nullptr) *max_class_length = static_cast<DWORD>(children.longest_class / 2);
    if (values != nullptr) *values = static_cast<DWORD>(value_count);
    if (max_value_name_length != nullptr) *max_value_name_length = static_cast<DWORD>(longest_value_name / 2);
    if (max_value_size != nullptr) *max_value_size = static_cast<DWORD>(longest_data);
    if (security_descriptor_size != nullptr) *security_descriptor_size = 0;
    if (last_write != nullptr) *last_write = FileTimeOf(written);
    return classed;
  });
}

}  // namespace cadtools::registry
