// The steps of an import, shared by every platform.
#include "reg_apply.h"

#include <atomic>
#include <limits>

#include "reg_text.h"

namespace cadtools::registry::detail {

namespace {

std::atomic<std::size_t> g_fail_at{0};
std::atomic<std::size_t> g_changes{0};

// ERROR_REGISTRY_IO_FAILED for the change a test asked to fail.
LSTATUS InjectedFailure() noexcept {
  const std::size_t at = g_fail_at.load();
  return at != 0 && ++g_changes == at ? ERROR_REGISTRY_IO_FAILED : ERROR_SUCCESS;
}

LSTATUS ApplyValue(HKEY key, const RegValueEntry& value) {
  if (const LSTATUS injected = InjectedFailure(); injected != ERROR_SUCCESS) return injected;
  if (value.remove) {
    const LSTATUS status = registry::RegDeleteValueW(key, value.name.c_str());
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
  }
  return SetValueExactly(key, value.name, value.type, value.data);
}

}  // namespace

LSTATUS SetValueExactly(HKEY key, const WString& name, DWORD type, const std::vector<BYTE>& data) {
  if (data.size() > std::numeric_limits<DWORD>::max()) return ERROR_NOT_ENOUGH_MEMORY;
  std::vector<BYTE> guarded(data);
  guarded.insert(guarded.end(), {BYTE{0xFF}, BYTE{0xFF}});
  return registry::RegSetValueExW(key, name.c_str(), 0, type, guarded.data(), static_cast<DWORD>(data.size()));
}

RegTransferResult TransferFailure(LSTATUS status, std::string message, std::size_t line) {
  if (status == ERROR_ACCESS_DENIED) message += ": access denied";
  if (status != ERROR_FILE_NOT_FOUND && status != ERROR_INVALID_PARAMETER) {
    message += " (error " + std::to_string(status) + ")";
  }
  return RegTransferResult{status, std::move(message), line};
}

void FailChangeForTests(std::size_t n) noexcept {
  g_changes = 0;
  g_fail_at = n;
}

RegTransferResult ApplyEntries(const RegKeys& keys, ApplyObserver* observer) {
  for (const RegKeyEntry& entry : keys) {
    const HKEY hive = HiveHandle(entry.hive);
    const auto failed = [&](LSTATUS status, const char* doing) {
      return TransferFailure(status, std::string(doing) + " " + KeyText(entry.hive, entry.path), entry.line);
    };
    if (entry.remove) {
      LSTATUS status = observer != nullptr ? observer->BeforeDeleteTree(entry) : ERROR_SUCCESS;
      if (status == ERROR_SUCCESS) status = InjectedFailure();
      if (status == ERROR_SUCCESS) status = registry::SHDeleteKeyW(hive, entry.path.c_str());
      if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return failed(status, "cannot delete");
      continue;
    }
    OpenKey key;
    if (entry.path.empty()) {
      key.Borrow(hive);
    } else {
      LSTATUS status = observer != nullptr ? observer->BeforeCreate(entry) : ERROR_SUCCESS;
      if (status == ERROR_SUCCESS) status = InjectedFailure();
      if (status == ERROR_SUCCESS) {
        status = registry::RegCreateKeyExW(hive, entry.path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                           KEY_WRITE, nullptr, key.Receive(), nullptr);
      }
      if (status != ERROR_SUCCESS) return failed(status, "cannot create");
    }
    for (const RegValueEntry& value : entry.values) {
      LSTATUS status = observer != nullptr ? observer->BeforeValue(entry, value) : ERROR_SUCCESS;
      if (status == ERROR_SUCCESS) status = ApplyValue(key.get(), value);
      if (status != ERROR_SUCCESS) {
        return TransferFailure(status,
                               std::string(value.remove ? "cannot delete" : "cannot set") + " the value '" +
                                   Utf8(value.name) + "' in " + KeyText(entry.hive, entry.path),
                               value.line);
      }
    }
  }
  return {};
}

}  // namespace cadtools::registry::detail
