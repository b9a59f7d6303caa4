#include "stand_ins.h"

#include <cadtools/bridge/runtime.h>
#include <cadtools/compat/cstring.h>

#include "bridge/bridge_assembly.h"

#include <system_error>

namespace cadtools::cli {

bool LoadStandIns(std::initializer_list<const char*> files) {
  const std::filesystem::path folder = bridge::detail::ModuleFolder();
  bridge::Runtime& rt = bridge::Runtime::Get();
  for (const char* file : files) {
    const std::filesystem::path path = folder / file;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return false;
    rt.LoadAssembly(FromUtf8(path.string()).View());
  }
  return true;
}

std::filesystem::path DemoSymbolDatabase() { return bridge::detail::ModuleFolder() / "symbols"; }

}  // namespace cadtools::cli
