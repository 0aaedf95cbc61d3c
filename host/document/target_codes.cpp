#include "host/document/target_codes.h"

#include "vorn/framework/base.h"

namespace vorn_host {

CStringArray CodesOf(const VornFormCtrlTarget& target) {
  CStringArray codes;
  Vorn_Base::DivideString(target.GetCodeName().View(), codes);
  return codes;
}

}  // namespace vorn_host
