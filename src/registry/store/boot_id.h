// Which run of the machine this is, for volatile keys: Windows keeps a key
// created with REG_OPTION_VOLATILE until the machine restarts, so the
// store tags such keys with the run that made them and drops them once
// another run opens the store.
//
//   BootId()   // "3f1c0c4e-8f2e-4b8a-9a5d-0c7f2b1e6d42" on Linux
#pragma once

#include <string>

namespace cadtools::registry::store {

// The kernel's id of this boot (/proc/sys/kernel/random/boot_id), else
// the boot time from /proc/stat; read once. Empty when neither can be
// read: volatile keys then last as long as the store.
const std::string& BootId();

}  // namespace cadtools::registry::store
