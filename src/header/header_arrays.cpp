// Making and releasing the tables of a header.
//
// A header's counts come from the file and may be garbage. A table is made
// only when the block that fills it fits in the file by the layout rule and
// the table has no more entries than the file has words; anything larger is
// refused as a failed allocation would be, so no count can ask for memory
// out of proportion to the file.
#include <algorithm>

#include "header/block_reading.h"
#include "header/tide3_database_files.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view ALLOCATION_FAILURE = "Unable to allocate memory for database header data.";

// Makes tables while the file can back them; the first refusal or failure
// stops every later one.
class TABLE_MAKER {
 public:
  explicit TABLE_MAKER(int64_t file_records) : records_(file_records), words_(8 * file_records) {}

  bool OK() const { return ok_; }
  void FAIL() { ok_ = false; }

  // True when a block of `records` records fits in the file.
  bool FITS(int64_t records) {
    if (records > records_) ok_ = false;
    return ok_;
  }

  template <typename T, std::size_t RANK>
  void MAKE(TABLE<T, RANK>& table, const std::array<int64_t, RANK>& extents, const T& fill = T{}) {
    if (!ok_) return;
    int64_t entries = 1;
    for (const int64_t extent : extents) {
      entries *= std::max<int64_t>(extent, 0);
      if (entries > words_) break;
    }
    ok_ = entries <= words_ && table.ALLOCATE(extents, fill);
  }

 private:
  int64_t records_;
  int64_t words_;
  bool ok_ = true;
};

int64_t TIMES(int64_t count, int64_t records) { return std::max<int64_t>(count, 0) * records; }

}  // namespace

int64_t TIDE3_DATABASE_FILES::FILE_RECORDS() const { return (HEADER_FILE.SIZE() + 31) / 32; }

void TIDE3_DATABASE_FILES::ALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS(int32_t& flag) {
  using MOD_COMMON_DATABASE::P8;
  HEADER_TABLES& t = TABLES;
  TABLE_MAKER make(FILE_RECORDS());

  if (SEABED_GEOMETRY != 4 && SEABED_GEOMETRY != 5 && make.FITS(P8(2 * int64_t{NUM_SEABED_POINTS}))) {
    int32_t status = 0;
    SEABED_PROFILE.ALLOCATE_NODES(NUM_SEABED_POINTS, &status);
    if (status != 0) make.FAIL();
  }

  // Structure: the end nodes always have room for the two that block 16
  // gives, and the coordinates for the three that block 19 gives.
  const int64_t elements = NUM_ELEMENTS;
  if (make.FITS(TIMES(elements, 3)) && make.FITS(elements)) {
    make.MAKE(t.ELEMENT_NUMBERS, {elements, 2});
    make.MAKE(t.ELEMENT_NODES, {elements, std::max(NODES_PER_ELEMENT, 2)});
    for (TABLE<float>* table : {&t.ELEMENT_LENGTH, &t.ELEMENT_A6, &t.ELEMENT_A7, &t.ELEMENT_B1, &t.ELEMENT_B2,
                                &t.ELEMENT_B3, &t.ELEMENT_B4, &t.ELEMENT_B6, &t.ELEMENT_B7, &t.ELEMENT_B8,
                                &t.ELEMENT_C1, &t.CONTACT_DIAMETERS}) {
      make.MAKE(*table, {elements});
    }
    make.MAKE(t.ELEMENT_A8, {elements});
    make.MAKE(t.ELEMENT_B5, {elements});
    make.MAKE(t.ELEMENT_SECTION_TABLE, {elements, 4});
  }
  if (make.FITS(NUM_NONLINEAR_E_TABLES)) make.MAKE(t.NONLINEAR_E_TABLE, {NUM_NONLINEAR_E_TABLES, 4});
  if (make.FITS(NUM_NODES)) {
    make.MAKE(t.NODE_NUMBERS, {NUM_NODES, 2});
    make.MAKE(t.NODE_COORDINATES, {std::max(COORDS_PER_NODE, 3), NUM_NODES});
  }
  if (make.FITS(P8(NUM_BOUNDARY_CONDITIONS))) {
    make.MAKE(t.CONDITION_NODES, {NUM_BOUNDARY_CONDITIONS});
    make.MAKE(t.BOUNDARY_CONDITION_NODES, {NUM_BOUNDARY_CONDITIONS});
  }
  if (make.FITS(TIMES(NUM_AUX_ELEMENTS, 2))) {
    make.MAKE(t.AUX_ELEMENT_NUMBERS, {NUM_AUX_ELEMENTS});
    make.MAKE(t.AUX_ELEMENT_NODES, {2, NUM_AUX_ELEMENTS});
    for (TABLE<float>* table : {&t.AUX_ELEMENT_R5, &t.AUX_ELEMENT_R6, &t.AUX_ELEMENT_R7}) {
      make.MAKE(*table, {NUM_AUX_ELEMENTS});
    }
    make.MAKE(t.AUX_ELEMENT_W8, {NUM_AUX_ELEMENTS});
    make.MAKE(t.AUX_ELEMENT_W9, {NUM_AUX_ELEMENTS});
  }
  if (make.FITS(NUM_AUX_NODES)) {
    make.MAKE(t.AUX_NODE_NUMBERS, {NUM_AUX_NODES});
    make.MAKE(t.AUX_NODE_COORDINATES, {NUM_AUX_NODES, 3});
  }

  // Environment.
  if (make.FITS(NUM_WAVE_HARMONICS)) make.MAKE(t.WAVE_HARMONICS, {NUM_WAVE_HARMONICS, 5});
  if (make.FITS(NUM_DSP_WAVE_HARMONICS)) make.MAKE(t.DSP_WAVE_HARMONICS, {5, NUM_DSP_WAVE_HARMONICS});
  if (make.FITS(NUM_CURRENT_POINTS)) make.MAKE(t.CURRENT_PROFILE, {NUM_CURRENT_POINTS, 3});

  // Sets and labels: a set takes at least 9 records, a label 9.
  if (make.FITS(TIMES(NUM_ELEMENT_SETS, 9))) {
    make.MAKE(t.ELEMENT_SET_NAMES, {NUM_ELEMENT_SETS});
    make.MAKE(t.ELEMENT_SET_COUNTS, {NUM_ELEMENT_SETS});
    if (make.OK()) t.ELEMENT_SET_MEMBERS.assign(static_cast<std::size_t>(std::max(NUM_ELEMENT_SETS, 0)), {});
  }
  if (make.FITS(TIMES(NUM_NODE_SETS, 9))) {
    make.MAKE(t.NODE_SET_NAMES, {NUM_NODE_SETS});
    make.MAKE(t.NODE_SET_COUNTS, {NUM_NODE_SETS});
    if (make.OK()) t.NODE_SET_MEMBERS.assign(static_cast<std::size_t>(std::max(NUM_NODE_SETS, 0)), {});
  }
  if (make.FITS(TIMES(NUM_LABELS, 9))) {
    make.MAKE(t.LABEL_NAMES, {NUM_LABELS});
    make.MAKE(t.LABEL_TARGETS, {NUM_LABELS, 2});
  }
  if (make.FITS(P8(NUM_POINT_MASSES))) make.MAKE(t.POINT_MASS_NODES, {NUM_POINT_MASSES});
  if (make.FITS(NUM_POINT_LOADS)) make.MAKE(t.POINT_LOADS, {3, NUM_POINT_LOADS});

  // Contact and installation.
  if (make.FITS(TIMES(PIP_NODES_PER_PAIR, std::max(NUM_PIPE_IN_PIPE, 0)))) {
    make.MAKE(t.PIP_DATA, {PIP_NODES_PER_PAIR, 2, NUM_PIPE_IN_PIPE});
  }
  if (make.FITS(TIMES(NUM_GUIDE_SURFACES, VERSION.GUIDE_SURFACE_HEAD_RECORDS + 8))) {
    make.MAKE(t.GUIDE_SURFACE_IDS, {NUM_GUIDE_SURFACES});
    make.MAKE(t.GUIDE_SURFACE_VALUES, {NUM_GUIDE_SURFACES, 2});
    make.MAKE(t.GUIDE_SURFACE_SWITCHES, {NUM_GUIDE_SURFACES, 2});
    make.MAKE(t.GUIDE_SURFACE_FLAGS, {NUM_GUIDE_SURFACES});
    make.MAKE(t.GUIDE_SURFACE_NAMES, {NUM_GUIDE_SURFACES});
    make.MAKE(t.AXES_TABLE, {NUM_GUIDE_SURFACES, 2, 3});
    make.MAKE(t.ORIGIN_TABLE, {NUM_GUIDE_SURFACES, 3});
  }
  if (make.FITS(NUM_PANELS)) {
    make.MAKE(t.PANEL_TABLE, {NUM_PANELS, 4});
    make.MAKE(t.PANEL_VALUES, {NUM_PANELS});
  }
  if (make.FITS(NUM_ZERO_GAP_GUIDES)) {
    make.MAKE(t.ZERO_GAP_GUIDE_IDS, {NUM_ZERO_GAP_GUIDES});
    make.MAKE(t.ZERO_GAP_GUIDE_VALUES, {NUM_ZERO_GAP_GUIDES});
    make.MAKE(t.ZGG_DIRECTION, {NUM_ZERO_GAP_GUIDES, 3});
    make.MAKE(t.ZGG_ORIGIN, {NUM_ZERO_GAP_GUIDES, 3});
  }
  if (make.FITS(TIMES(NUM_INSTALLATION_CRITERIA, 9))) {
    make.MAKE(t.INSTALLATION_CRITERIA_IDS, {NUM_INSTALLATION_CRITERIA});
    make.MAKE(t.INSTALLATION_CRITERIA_VALUE_1, {NUM_INSTALLATION_CRITERIA});
    make.MAKE(t.INSTALLATION_CRITERIA_VALUE_2, {NUM_INSTALLATION_CRITERIA});
    make.MAKE(t.INSTALLATION_CRITERIA_NAMES, {NUM_INSTALLATION_CRITERIA});
  }
  if (make.FITS(TIMES(NUM_FLOATING_BODIES, 4))) {
    make.MAKE(t.FLOATING_BODY_IDS, {NUM_FLOATING_BODIES});
    make.MAKE(t.FLOATING_BODY_NAMES, {NUM_FLOATING_BODIES});
    make.MAKE(t.FLOATING_BODY_VALUES, {NUM_FLOATING_BODIES});
    make.MAKE(t.FLOATING_BODY_CODES, {NUM_FLOATING_BODIES});
  }
  if (make.FITS(TIMES(NUM_VESSELS, 9))) make.MAKE(t.VESSEL_NAMES, {NUM_VESSELS});
  make.MAKE(t.STINGER_DATA, {6});
  if (make.FITS(P8(NUM_DAMPER_ELEMENTS))) make.MAKE(t.DAMPER_ELEMENTS, {NUM_DAMPER_ELEMENTS});

  // Every step has a frame of at least one record.
  if (make.FITS(NUM_TIME_STEPS)) make.MAKE(t.TIME_LIST, {NUM_TIME_STEPS});

  if (!make.OK()) HEADER_FAILURE(ALLOCATION_FAILURE, flag);
}

void TIDE3_DATABASE_FILES::DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS() {
  SEABED_PROFILE.DESTROY();
  // The plastic hardening models release their own arrays first; then every
  // table goes at once, so no table of the last header can outlive it.
  TABLE<MOD_PLASTIC_HARDENING::T_PLASTIC_HARDENING>& models = TABLES.PLASTIC_HARDENING_MODELS;
  for (int64_t m = 1; m <= models.EXTENT(); ++m) MOD_PLASTIC_HARDENING::DEALLOCATE(models(m));
  TABLES = HEADER_TABLES{};
}

}  // namespace tmrdar::header
