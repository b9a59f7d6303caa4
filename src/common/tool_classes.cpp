// The exported classes of static functions: their virtual destructors
// live here, once.
#include <cadtools/math_tools.h>
#include <cadtools/text_tools.h>

CMathTools::~CMathTools() = default;
CTextTools::~CTextTools() = default;
