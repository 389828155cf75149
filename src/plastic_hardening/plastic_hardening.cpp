#include "plastic_hardening/plastic_hardening.h"

#include <new>

namespace tmrdar::plastic_hardening {

double PlasticHardening::data(int32_t row, int32_t pair) const {
  if (row < 1 || row > 2 || pair < 1 || pair > num_pairs()) return 0.0;
  return data_pairs[2 * static_cast<std::size_t>(pair - 1) + static_cast<std::size_t>(row - 1)];
}

void plastic_hardening_init(PlasticHardening& model) { model = PlasticHardening{}; }

void allocate_data_pairs(PlasticHardening& model, int32_t count, int32_t& status) {
  deallocate(model);
  status = 0;
  try {
    model.data_pairs.assign(2 * static_cast<std::size_t>(count > 0 ? count : 0), 0.0);
    model.data_allocated = true;
  } catch (const std::bad_alloc&) {
    deallocate(model);
    status = 1;
  }
}

void set_scalars_sub(PlasticHardening& model, int32_t rule, double kinematic_share, double curve_tolerance) {
  model.rule = rule;
  model.kinematic_share = kinematic_share;
  model.curve_tolerance = curve_tolerance;
}

void set_data_iso_sub(PlasticHardening& model, int32_t index, double first, double second, int32_t& status) {
  if (index < 1 || index > model.num_pairs()) {
    status = 1;
    return;
  }
  status = 0;
  model.data_pairs[2 * static_cast<std::size_t>(index - 1)] = first;
  model.data_pairs[2 * static_cast<std::size_t>(index - 1) + 1] = second;
}

void deallocate(PlasticHardening& model) {
  std::vector<double>().swap(model.data_pairs);
  model.data_allocated = false;
}

}  // namespace tmrdar::plastic_hardening
