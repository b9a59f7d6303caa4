// RegQueryValueExW, RegSetValueExW and RegDeleteValueW off Windows.
#include <cadtools/registry/registry_api.h>

#include "registry/store/clock.h"
#include "registry/store/store.h"
#include "registry/store/string_data.h"

namespace cadtools::registry {

using namespace store;

namespace {

LONG QueryValue(Session& session, Handle& handle, Units value_name, const Capacity& capacity, LPDWORD type,
                LPBYTE data, LPDWORD data_size) {
  std::string& folded = session.store().folded;
  folded.clear();
  AppendName(folded, value_name, NameForm::kFolded);
  Database& db = session.hive(handle).db();
  return OnKey(session, handle, [&](std::int64_t id) -> LONG {
    {
      Query query(db, Sql::kGetValue);
      query.Bind(1, id);
      query.Bind(2, folded);
      if (query.Row()) {
        const auto stored_type = static_cast<DWORD>(query.Int(0));
        if (type != nullptr) *type = stored_type;
        return capacity.Deliver(stored_type, query.Blob(1), data, data_size);
      }
      if (query.failed()) return kStoreFailed;
    }
    return NothingFound(db, id, ERROR_FILE_NOT_FOUND);
  });
}

}  // namespace

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                         LPDWORD data_size) noexcept {
  if (reserved != nullptr || (data != nullptr && data_size == nullptr)) return ERROR_INVALID_PARAMETER;
  if (AnyUnusable(name, type, data, data_size)) return ERROR_NOACCESS;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    if ((handle->access & KEY_QUERY_VALUE) == 0) return ERROR_ACCESS_DENIED;
    // The caller's capacity is read before anything is written: type and
    // size may be one variable.
    const Capacity capacity(data, data_size);
    const Units value_name = NameOf(name);
    LONG result = ERROR_FILE_NOT_FOUND;
    if (!handle->missing && value_name.size() <= kMaxValueNameUnits) {
      result = QueryValue(session, *handle, value_name, capacity, type, data, data_size);
    }
    const LONG answer = Answer(result, CallKind::kRead);
    // Windows answers a missing value with size 0.
    if (answer == ERROR_FILE_NOT_FOUND && data_size != nullptr) *data_size = 0;
    return answer;
  });
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD /*reserved: ignored, as Windows does*/, DWORD type,
                       const BYTE* data, DWORD data_size) noexcept {
  if (AnyUnusable(data, name)) return ERROR_NOACCESS;
  if (data == nullptr && data_size > 0) return ERROR_NOACCESS;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    const Units value_name = NameOf(name);
    if (value_name.size() > kMaxValueNameUnits) return ERROR_INVALID_PARAMETER;
    if ((handle->access & KEY_SET_VALUE) == 0 || handle->missing) return ERROR_ACCESS_DENIED;
    Hive& hive = session.hive(*handle);
    if (hive.read_only()) return ERROR_ACCESS_DENIED;
    hive.BeforeWrite();
    Store& store = session.store();
    store.folded.clear();
    AppendName(store.folded, value_name, NameForm::kFolded);
    store.name.clear();
    AppendName(store.name, value_name, NameForm::kAsCreated);
    std::string_view bytes(reinterpret_cast<const char*>(data), data == nullptr ? 0 : data_size);
    std::string terminated;
    if (data != nullptr && TerminatorLeftOut(type, data, data_size)) {
      terminated.assign(bytes).append(2, '\0');
      bytes = terminated;
    }
    Database& db = hive.db();
    const LONG result = OnKey(session, *handle, [&](std::int64_t id) -> LONG {
      Query upsert(db, Sql::kSetValue);
      upsert.Bind(1, id);
      upsert.Bind(2, store.folded);
      upsert.Bind(3, store.name);
      upsert.Bind(4, static_cast<std::int64_t>(type));
      upsert.Bind(5, bytes);
      upsert.Bind(6, FileTimeNow());
      if (!upsert.Run()) return kStoreFailed;
      return db.changes() > 0 ? ERROR_SUCCESS : kKeyGone;
    });
    return Answer(result, CallKind::kWrite);
  });
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) noexcept {
  if (Unusable(name)) return ERROR_NOACCESS;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* handle = session.Resolve(key);
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    if ((handle->access & KEY_SET_VALUE) == 0) return ERROR_ACCESS_DENIED;
    const Units value_name = NameOf(name);
    if (value_name.size() > kMaxValueNameUnits || handle->missing) return ERROR_FILE_NOT_FOUND;
    Hive& hive = session.hive(*handle);
    if (hive.read_only()) return ERROR_ACCESS_DENIED;
    hive.BeforeWrite();
    std::string& folded = session.store().folded;
    folded.clear();
    AppendName(folded, value_name, NameForm::kFolded);
    Database& db = hive.db();
    const LONG result = OnKey(session, *handle, [&](std::int64_t id) -> LONG {
      Transaction transaction(db);
      if (!transaction.begun()) return kStoreFailed;
      {
        Query erase(db, Sql::kDeleteValue);
        erase.Bind(1, id);
        erase.Bind(2, folded);
        if (!erase.Run()) return kStoreFailed;
      }
      if (db.changes() == 0) return NothingFound(db, id, ERROR_FILE_NOT_FOUND);
      Query touch(db, Sql::kTouchKey);
      touch.Bind(1, id);
      touch.Bind(2, FileTimeNow());
      if (!touch.Run()) return kStoreFailed;
      return transaction.Commit() ? ERROR_SUCCESS : kStoreFailed;
    });
    return Answer(result, CallKind::kWrite);
  });
}

}  // namespace cadtools::registry
