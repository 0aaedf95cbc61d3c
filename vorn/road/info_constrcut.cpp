#include "vorn/road/info_constrcut.h"

#include "vorn/framework/define_manager.h"

void VornInfoConstrcut::LoadRegistry() {
  WexKey root;
  if (VornGetBaseRegKey(&root)) m_formCtrl.LoadRegistry(&root);
}
