// Applying .reg entries to the registry: the steps every platform shares,
// and the two ways an import is made all or nothing.
//
// Off Windows (ApplyInBatch) the entries go into the store inside one
// transaction per store (store/batch.h): a failure rolls everything back,
// and so does a killed process; a journal finishes an import whose stores
// were not all committed when the process died.
//
// On Windows (ApplyWithUndo) the entries go through the system registry,
// which has no transactions we may use: the rights each entry needs are
// checked before anything is written, what each change replaces is kept,
// and a failure puts it all back in reverse order. A process killed in
// the middle leaves what it wrote so far.
#pragma once

#include <cadtools/registry/reg_file.h>
#include <cadtools/registry/registry_api.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cadtools::registry::detail {

// An open key, closed when it goes. The hive handles themselves are never
// closed.
class OpenKey {
 public:
  OpenKey() = default;
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  ~OpenKey() {
    if (handle_ != nullptr && owned_) registry::RegCloseKey(handle_);
  }
  void Borrow(HKEY hive) {
    handle_ = hive;
    owned_ = false;
  }
  HKEY* Receive() {
    owned_ = true;
    return &handle_;
  }
  HKEY get() const noexcept { return handle_; }

 private:
  HKEY handle_ = nullptr;
  bool owned_ = false;
};

// Sets a value to exactly these bytes. Two bytes that are no NUL follow
// them in memory: the registry stores a NUL that follows string data whose
// size leaves out its terminator, and the value is to hold what was given.
LSTATUS SetValueExactly(HKEY key, const WString& name, DWORD type, const std::vector<BYTE>& data);

// A failed transfer: the words, with " (error N)" unless they say it all
// and ": access denied" for a refusal.
RegTransferResult TransferFailure(LSTATUS status, std::string message, std::size_t line = 0);

// Told before each change an import makes, so that it can be undone.
// A result other than ERROR_SUCCESS stops the import there.
class ApplyObserver {
 public:
  virtual ~ApplyObserver() = default;
  virtual LSTATUS BeforeCreate(const RegKeyEntry& key) = 0;
  virtual LSTATUS BeforeDeleteTree(const RegKeyEntry& key) = 0;
  virtual LSTATUS BeforeValue(const RegKeyEntry& key, const RegValueEntry& value) = 0;
};

// The entries in order through the registry calls: creates each key and
// sets or deletes its values, deletes [-KEY] trees. Deleting what is not
// there is not an error, as in the registry editor. Stops at the first
// call that fails.
RegTransferResult ApplyEntries(const RegKeys& keys, ApplyObserver* observer = nullptr);

// The import through the registry calls with rights checked up front and
// every change undone when one fails (used on Windows; it works on the
// store as well, where tests try it).
RegTransferResult ApplyWithUndo(const RegKeys& keys);

#if !defined(_WIN32)
// The import in one batch of the store. finishing: the batch does again
// an import whose journal a killed process left.
RegTransferResult ApplyInBatch(const RegKeys& keys, bool finishing = false);
#endif

// Makes change number n (counted from 1 over the next imports' changes)
// fail with ERROR_REGISTRY_IO_FAILED, as a store failing in the middle
// would; 0 turns it off. For tests.
void FailChangeForTests(std::size_t n) noexcept;

// Entries as bytes and back, exactly (names with any unit, lines kept),
// for the journal of an import. Nullopt for bytes that are no journal.
std::string SerializeEntries(const RegKeys& keys);
std::optional<RegKeys> DeserializeEntries(std::string_view bytes);

}  // namespace cadtools::registry::detail
