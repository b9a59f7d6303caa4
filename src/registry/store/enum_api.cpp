// RegEnumKeyExW, RegEnumValueW and RegQueryInfoKeyW off Windows.
#include <cadtools/registry/registry_api.h>

#include "registry/store/clock.h"
#include "registry/store/store.h"

#include <algorithm>
#include <cstring>

namespace cadtools::registry {

using namespace store;

namespace {

FILETIME FileTimeOf(std::int64_t count) noexcept {
  const auto bits = static_cast<std::uint64_t>(count);
  return FILETIME{static_cast<DWORD>(bits & 0xFFFFFFFFu), static_cast<DWORD>(bits >> 32)};
}

// The store keeps no class names: every key's class is empty.
void NoClass(LPWSTR class_name, LPDWORD class_length) noexcept {
  if (class_length == nullptr) return;
  if (class_name != nullptr && *class_length > 0) class_name[0] = 0;
  *class_length = 0;
}

// Copies a stored name with its NUL when it fits the capacity (which
// counts the NUL) and sets the length without it; otherwise
// ERROR_MORE_DATA with buffer and length untouched.
LONG DeliverName(std::string_view bytes, LPWSTR name, LPDWORD name_length) noexcept {
  const DWORD units = NameUnits(bytes);
  if (units >= *name_length) return ERROR_MORE_DATA;
  DecodeName(bytes, name);
  name[units] = 0;
  *name_length = units;
  return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved,
                      LPWSTR class_name, LPDWORD class_length, PFILETIME last_write) noexcept {
  if (name == nullptr || name_length == nullptr || reserved != nullptr) return ERROR_INVALID_PARAMETER;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    if ((handle->access & KEY_ENUMERATE_SUB_KEYS) == 0) return ERROR_ACCESS_DENIED;
    Database& db = session.hive(*handle).db();
    const LONG result = OnKey(session, *handle, [&](std::int64_t id) -> LONG {
      {
        Query query(db, Sql::kEnumKey);
        query.Bind(1, id);
        query.Bind(2, static_cast<std::int64_t>(index));
        if (query.Row()) {
          const LONG delivered = DeliverName(query.Blob(0), name, name_length);
          if (delivered != ERROR_SUCCESS) return delivered;
          NoClass(class_name, class_length);
          if (last_write != nullptr) *last_write = FileTimeOf(query.Int(1));
          return ERROR_SUCCESS;
        }
        if (query.failed()) return kStoreFailed;
      }
      return NothingFound(db, id, ERROR_NO_MORE_ITEMS);
    });
    return Answer(result, CallKind::kRead);
  });
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD data_size) noexcept {
  if (name == nullptr || name_length == nullptr || reserved != nullptr ||
      (data != nullptr && data_size == nullptr)) {
    return ERROR_INVALID_PARAMETER;
  }
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    if ((handle->access & KEY_QUERY_VALUE) == 0) return ERROR_ACCESS_DENIED;
    Database& db = session.hive(*handle).db();
    const LONG result = OnKey(session, *handle, [&](std::int64_t id) -> LONG {
      {
        Query query(db, Sql::kEnumValue);
        query.Bind(1, id);
        query.Bind(2, static_cast<std::int64_t>(index));
        if (query.Row()) {
          // Type and size come back even when the name does not fit, so
          // that a caller can size both buffers from one call.
          const std::string_view bytes = query.Blob(2);
          const auto needed = static_cast<DWORD>(bytes.size());
          if (type != nullptr) *type = static_cast<DWORD>(query.Int(1));
          const LONG named = DeliverName(query.Blob(0), name, name_length);
          LONG delivered = named;
          if (named == ERROR_SUCCESS && data != nullptr) {
            if (*data_size < needed) {
              delivered = ERROR_MORE_DATA;
            } else if (needed > 0) {
              std::memcpy(data, bytes.data(), needed);
            }
          }
          if (data_size != nullptr) *data_size = needed;
          return delivered;
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
  if (reserved != nullptr) return ERROR_INVALID_PARAMETER;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    // Windows asks for KEY_QUERY_VALUE here (wine does not check).
    if ((handle->access & KEY_QUERY_VALUE) == 0) return ERROR_ACCESS_DENIED;
    Database& db = session.hive(*handle).db();
    const LONG result = OnKey(session, *handle, [&](std::int64_t id) -> LONG {
      std::int64_t written = 0;
      {
        Query self(db, Sql::kKeyWritten);
        self.Bind(1, id);
        if (!self.Row()) return self.failed() ? kStoreFailed : kKeyGone;
        written = self.Int(0);
      }
      Query children(db, Sql::kChildInfo);
      children.Bind(1, id);
      Query items(db, Sql::kValueInfo);
      items.Bind(1, id);
      if (!children.Row() || !items.Row()) return kStoreFailed;
      NoClass(class_name, class_length);
      if (sub_keys != nullptr) *sub_keys = static_cast<DWORD>(children.Int(0));
      if (max_sub_key_length != nullptr) *max_sub_key_length = static_cast<DWORD>(children.Int(1) / 2);
      if (max_class_length != nullptr) *max_class_length = 0;
      if (values != nullptr) *values = static_cast<DWORD>(items.Int(0));
      if (max_value_name_length != nullptr) *max_value_name_length = static_cast<DWORD>(items.Int(1) / 2);
      if (max_value_size != nullptr) *max_value_size = static_cast<DWORD>(items.Int(2));
      if (security_descriptor_size != nullptr) *security_descriptor_size = 0;
      if (last_write != nullptr) *last_write = FileTimeOf(std::max(written, items.Int(3)));
      return ERROR_SUCCESS;
    });
    return Answer(result, CallKind::kRead);
  });
}

}  // namespace cadtools::registry
