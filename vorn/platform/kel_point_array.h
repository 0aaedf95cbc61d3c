#pragma once

#include "vorn/platform/kel_array.h"
#include "vorn/platform/tam_world2.h"

/// A list of plane points; whoever fills it says which component is which.
class KelPointArray : public KelArray<TamWorld2> {};
