#include "common/subjects.h"

namespace bench {

void RegisterSubjects(PairRegistry& registry) {
  RegisterLinePairs(registry);
  RegisterRectPairs(registry);
  RegisterBezierPairs(registry);
  RegisterNaturalComparePairs(registry);
  RegisterTextLikePairs(registry);
  RegisterConversionPairs(registry);
  RegisterRegistryPairs(registry);
  RegisterBridgePairs(registry);
}

}  // namespace bench
