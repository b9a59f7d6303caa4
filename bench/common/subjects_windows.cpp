#include "common/subjects.h"

namespace bench {

void RegisterSubjects(PairRegistry& registry) { RegisterRegistryPairs(registry); }

}  // namespace bench
