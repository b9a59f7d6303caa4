// Where the registry benchmarks write: a store of their own in a temporary
// folder off Windows, a scratch key of the current user's on Windows, so
// that timing never touches a real setting.
#pragma once

#include <cadtools/compat/win_types.h>

#include <string>

namespace bench {

// The root, with its trailing backslash, that the typed values below use:
// "Software\Quenby\cadtools-bench\Version V8R1\". Six key levels with the
// benchmark's own "Settings\Bench", as deep as the host's settings.
const WCHAR* BenchRootText();

// Prepares the store once (folder or scratch key) and removes it at exit.
void UseScratchStore();

// The temporary folder of the store off Windows ("" on Windows).
const std::string& ScratchFolder();

}  // namespace bench
