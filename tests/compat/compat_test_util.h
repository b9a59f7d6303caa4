// Helpers shared by the compat tests.
#pragma once

#include <cadtools/compat/exceptions.h>

#include <functional>

namespace cadtools::test {

// Runs f and reports whether it raised the library's invalid-argument
// exception, caught and released as host code does.
inline bool ThrowsInvalidArg(const std::function<void()>& f) {
  try {
    f();
  } catch (CException* e) {
    const bool ok = dynamic_cast<CInvalidArgException*>(e) != nullptr;
    e->Delete();
    return ok;
  }
  return false;
}

}  // namespace cadtools::test
