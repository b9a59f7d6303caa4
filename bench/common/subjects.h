// Every subject's benchmark pairs, registered by main() into one binary.
// A subject adds its sources under bench/<subject>/ and its registration
// functions here and in main().
#pragma once

#include "common/ratio_table.h"

namespace bench {

// Geometry: our functions beside Boost.Geometry or plain code.
void RegisterLinePairs(PairRegistry& registry);
void RegisterRectPairs(PairRegistry& registry);
void RegisterBezierPairs(PairRegistry& registry);

// Text: natural sorting beside glibc strverscmp and ICU's numeric
// collation, wildcard matching beside POSIX fnmatch.
void RegisterNaturalComparePairs(PairRegistry& registry);
void RegisterTextLikePairs(PairRegistry& registry);
// Code pages: WideCharToMB and MB2WideChar beside glibc iconv and ICU's
// UTF-8 conversion.
void RegisterConversionPairs(PairRegistry& registry);

// Registry: a typed value beside SQLite used directly (off Windows) or the
// registry API called directly (on Windows).
void RegisterRegistryPairs(PairRegistry& registry);

// Bridge: calls and strings through the runtime seam beside Mono's
// embedding API called directly.
void RegisterBridgePairs(PairRegistry& registry);

// Every subject this platform's binary has: all of them off Windows, the
// registry alone in the Windows build (its peers need Boost and ICU).
void RegisterSubjects(PairRegistry& registry);

}  // namespace bench
