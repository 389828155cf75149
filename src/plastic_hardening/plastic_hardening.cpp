#include "plastic_hardening/plastic_hardening.h"

#include <new>

namespace tmrdar::MOD_PLASTIC_HARDENING {

double T_PLASTIC_HARDENING::DATA(int32_t row, int32_t pair) const {
  if (row < 1 || row > 2 || pair < 1 || pair > NUM_PAIRS()) return 0.0;
  return DATA_PAIRS[2 * static_cast<std::size_t>(pair - 1) + static_cast<std::size_t>(row - 1)];
}

void PLASTIC_HARDENING_INIT(T_PLASTIC_HARDENING& model) { model = T_PLASTIC_HARDENING{}; }

void ALLOCATE_DATA_PAIRS(T_PLASTIC_HARDENING& model, int32_t count, int32_t& status) {
  DEALLOCATE(model);
  status = 0;
  try {
    model.DATA_PAIRS.assign(2 * static_cast<std::size_t>(count > 0 ? count : 0), 0.0);
    model.DATA_ALLOCATED = true;
  } catch (const std::bad_alloc&) {
    DEALLOCATE(model);
    status = 1;
  }
}

void SET_SCALARS_SUB(T_PLASTIC_HARDENING& model, int32_t rule, double kinematic_share, double curve_tolerance) {
  model.RULE = rule;
  model.KINEMATIC_SHARE = kinematic_share;
  model.CURVE_TOLERANCE = curve_tolerance;
}

void SET_DATA_ISO_SUB(T_PLASTIC_HARDENING& model, int32_t index, double first, double second, int32_t& status) {
  if (index < 1 || index > model.NUM_PAIRS()) {
    status = 1;
    return;
  }
  status = 0;
  model.DATA_PAIRS[2 * static_cast<std::size_t>(index - 1)] = first;
  model.DATA_PAIRS[2 * static_cast<std::size_t>(index - 1) + 1] = second;
}

void DEALLOCATE(T_PLASTIC_HARDENING& model) {
  std::vector<double>().swap(model.DATA_PAIRS);
  model.DATA_ALLOCATED = false;
}

}  // namespace tmrdar::MOD_PLASTIC_HARDENING
