// Placeholder until the hover rules land.
#include "app/SelfTest.h"

namespace SelfTestGroups {
void hoverBehaviour() {}
} // namespace SelfTestGroups
