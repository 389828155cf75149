// One result of one output step by its kind letter: the word of the motion
// or force frame that the letter, the entry and the parameter point at, or a
// value formed from two or three such words.
#include "results/letter_lookup.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "frame/base/error_handling.h"
#include "header/result_frames.h"
#include "results/frame_sections.h"

namespace tmrdar::results {

namespace {

using header::frame_words::add;
using header::frame_words::mul;


constexpr std::string_view no_force_file =
    "A force result was requested but the Force Database (*.dbf) does not exist.";
constexpr std::string_view no_nodal_motion = "Database does not contain nodal motion data.";
constexpr std::string_view no_motion_file_for_motion =
    "Nodal motion was requested but the Motion Database (*.dbm) does not exist.";
constexpr std::string_view no_nodal_velocity = "Database does not contain nodal velocity data.";
constexpr std::string_view no_motion_file_for_velocity =
    "Nodal velocity was requested but the Motion Database (*.dbm) does not exist.";
constexpr std::string_view no_nodal_acceleration = "Database does not contain nodal acceleration data.";
constexpr std::string_view no_motion_file_for_acceleration =
    "Nodal acceleration was requested but the Motion Database (*.dbm) does not exist.";
constexpr std::string_view no_database_for_surface =
    "Water surface elevation was requested but no database (*.dbm / *.dbf) exists.";
constexpr std::string_view no_force_file_for_reaction =
    "A reaction was requested but the Force Database (*.dbf) does not exist.";
constexpr std::string_view no_motion_file_for_vessel =
    "Vessel motion was requested but the Motion Database (*.dbm) does not exist.";

// The largest inverse of a force resultant, and what a resultant too small
// to invert gives: the 32-bit real nearest 999.999.
constexpr float inverse_limit = 999.999F;

void fail(std::string_view text, bool& error) {
  error_handling::error3(true, error_handling::database_postprocessing, text);
  error = true;
}

// Square root of the sum of the squares of three components, in 32 bits.
float magnitude(float a, float b, float c) { return std::sqrt(a * a + b * b + c * c); }
float magnitude(float a, float b) { return std::sqrt(a * a + b * b); }

// A nodal entry of a motion section or of the reaction section, whose words
// stand behind `base`: the parameters up to the stored components' count are
// those components, the next the magnitude of components 4 to 6, and the one
// after it, where `with_8`, that of components 1 to 3. The stored components
// are 6, or dofs_per_node in the formats that number them so. Each component
// read goes to `value` first, so a failure leaves the last one read there.
// Any other parameter gives nothing.
void nodal_component(header::FormatReader& db, int32_t file, int64_t entry_base, int32_t parameter,
                     bool with_8, float& value, bool& error) {
  const int64_t stored = db.version.components_by_dofs ? db.dofs_per_node : 6;
  if (parameter >= 1 && parameter <= stored) {
    db.readin(file, add(entry_base, parameter), value, error);
    return;
  }
  int32_t first = 0;
  if (parameter == stored + 1) first = 4;
  if (parameter == stored + 2 && with_8) first = 1;
  if (first == 0) return;
  std::array<float, 3> c{};
  for (int32_t k = 0; k < 3; ++k) {
    db.readin(file, add(entry_base, first + k), value, error);
    if (error) return;
    c[static_cast<std::size_t>(k)] = value;
  }
  value = magnitude(c[0], c[1], c[2]);
}

// The resultant of the force parameters `first` and `second` of one element
// location, each read through readf; false, with the failure reported, when
// either read fails.
bool force_resultant(header::FormatReader& db, int32_t step, int32_t element, int32_t location,
                     int32_t first, int32_t second, float& r, bool& error) {
  float a = 0.0F;
  float b = 0.0F;
  readf(db, step, element, location, first, a, error);
  if (error) return false;
  readf(db, step, element, location, second, b, error);
  if (error) return false;
  r = magnitude(a, b);
  return true;
}

// The inverse of a resultant, at most inverse_limit. Any positive resultant
// is inverted; the limit then catches what is too large.
float inverse(float r) { return std::min(r > 0.0F ? 1.0F / r : inverse_limit, inverse_limit); }

// Letter E in the formats that number force parameters as requests do:
// 1 to 7 the sections of flags 5 to 11, then, counted from dofs_per_node,
// the resultants of the sections of flags 9 and 10 and of flags 12 and 13;
// 15 the inverse of the second, 16 and 17 its two sections alone.
void request_numbered_element_force(header::FormatReader& db, int32_t step, int32_t element, int32_t location,
                                    int32_t parameter, float& value, bool& error) {
  const int64_t dofs = db.dofs_per_node;
  float r = 0.0F;
  if (parameter >= 1 && parameter <= 7) {
    readf(db, step, element, location, parameter, value, error);
  } else if (parameter == dofs + 2) {
    if (force_resultant(db, step, element, location, 5, 6, r, error)) value = r;
  } else if (parameter == dofs + 3) {
    if (force_resultant(db, step, element, location, 8, 9, r, error)) value = r;
  } else if (parameter == 15) {
    // The test is r <= 0 here, so a resultant that is not a number is
    // inverted and stays not a number.
    if (force_resultant(db, step, element, location, 8, 9, r, error)) {
      value = std::min(r <= 0.0F ? inverse_limit : 1.0F / r, inverse_limit);
    }
  } else if (parameter == 16 || parameter == 17) {
    readf(db, step, element, location, parameter - 8, value, error);
  }
}

// Letter E: the force parameters of an element location.
void element_force(header::FormatReader& db, int32_t step, int32_t element, int32_t location,
                   int32_t parameter, float& value, bool& error) {
  const header::ForceNumbering numbering = db.version.force_parameters;
  if (db.version.missing_file_messages && !db.force_file_open) return fail(no_force_file, error);
  if (numbering == header::ForceNumbering::section_by_parameter) {
    return request_numbered_element_force(db, step, element, location, parameter, value, error);
  }
  // The formats whose table stops at the pressures have no parameters 37 to 43.
  if (numbering == header::ForceNumbering::table_to_section_16 && parameter >= 37) return;
  float r = 0.0F;
  switch (parameter) {
    case 9: case 10: case 11: case 12: case 13: case 14: case 15:
    case 24: case 25:
    case 37: case 38: case 39: case 40: case 41:
      readf(db, step, element, location, parameter, value, error);
      return;
    case 16:
      if (force_resultant(db, step, element, location, 13, 14, r, error)) value = r;
      return;
    case 17:
      if (force_resultant(db, step, element, location, 24, 25, r, error)) value = r;
      return;
    case 23:
      if (force_resultant(db, step, element, location, 24, 25, r, error)) value = inverse(r);
      return;
    case 42:
      if (force_resultant(db, step, element, location, 38, 39, r, error)) value = r;
      return;
    case 43:
      // Here the resultant is compared, widened, with a 64-bit threshold.
      if (force_resultant(db, step, element, location, 38, 39, r, error)) {
        value = std::min(static_cast<double>(r) > 1e-10 ? 1.0F / r : inverse_limit, inverse_limit);
      }
      return;
    default:
      return;  // 18 to 22 and 26 to 36 among them: nothing is read
  }
}

// A word of the step record: from the motion frame when the motion file is
// open, else `force_word` of the force frame; with neither, nothing.
void step_record_word(header::FormatReader& db, int32_t step, int32_t place, int64_t force_word,
                      float& value, bool& error) {
  if (db.motion_file_open) {
    db.readin(motion, add(header::tb(db, step), place - 8), value, error);
  } else if (db.force_file_open) {
    db.readin(force, force_word, value, error);
  }
}

// Letter W: the vertical displacement of a node above the sea floor under it.
void height_above_seabed(header::FormatReader& db, int32_t step, int32_t entry, float& value, bool& error) {
  if (db.output_flags[0] != 1) return fail(no_nodal_motion, error);
  std::array<float, 3> c{};
  for (int32_t p = 1; p <= 3; ++p) {
    db.readin(motion, add(header::mb(db, step), node_word(db, entry, p)), c[static_cast<std::size_t>(p - 1)], error);
    if (error) return;
  }
  double height = 0.0;
  if (db.seabed_profile.geometry() != 0) {
    db.seabed_profile.height(static_cast<double>(c[1]), static_cast<double>(c[2]), height);
  }
  value = static_cast<float>(static_cast<double>(c[0]) - height);
}

// A lookup in a file that does not exist is reported where the format has
// words for it.
bool missing(const header::FormatReader& db, bool open) { return !open && db.version.missing_file_messages; }

// Letters G, H, C: one word of a whole entry read as a run of `count` words
// behind `entry_base`, so that the next word of the same entry is served
// from the kept records. A parameter outside 1 to `count` gives nothing.
void entry_word(header::FormatReader& db, int64_t entry_base, std::size_t count, int32_t parameter,
                float& value, bool& error) {
  std::array<float, 9> work{};
  db.readin_array(motion, add(entry_base, 1), std::span<float>(work.data(), count), error);
  if (error) return;
  if (parameter >= 1 && static_cast<std::size_t>(parameter) <= count) {
    value = work[static_cast<std::size_t>(parameter - 1)];
  }
}

}  // namespace

void dabfnd(header::FormatReader& db, int32_t step, int32_t element, int32_t entry, int32_t parameter,
            char letter, float& value, bool& error) {
  error = false;
  const HeaderVariables& h = db;
  const std::array<int32_t, header::num_output_flags>& flag = h.output_flags;

  switch (letter) {
    case 'T':
      return step_record_word(db, step, 1, add(header::fe(h, step), -7), value, error);
    case 'E':
      return element_force(db, step, element, entry, parameter, value, error);
    case 'D':
      if (flag[0] != 1) return fail(no_nodal_motion, error);
      if (missing(db, db.motion_file_open)) return fail(no_motion_file_for_motion, error);
      return nodal_component(db, motion, add(header::mb(h, step), node_word(h, entry, 0)), parameter, false,
                             value, error);
    case 'V': {
      if (flag[1] != 1) return fail(no_nodal_velocity, error);
      if (missing(db, db.motion_file_open)) return fail(no_motion_file_for_velocity, error);
      const int64_t section = add(header::mb(h, step), mul(flag[0], nodal_words(h)));
      return nodal_component(db, motion, add(section, node_word(h, entry, 0)), parameter, true, value, error);
    }
    case 'A': {
      if (flag[2] != 1) return fail(no_nodal_acceleration, error);
      if (missing(db, db.motion_file_open)) return fail(no_motion_file_for_acceleration, error);
      const int64_t section = add(header::mb(h, step), mul(int64_t{flag[0]} + flag[1], nodal_words(h)));
      return nodal_component(db, motion, add(section, node_word(h, entry, 0)), parameter, true, value, error);
    }
    case 'S':
      // Unlike T, P and B, the force frame's step record is found ahead of
      // the damper records (which only the newest format has).
      if (missing(db, db.motion_file_open || db.force_file_open)) return fail(no_database_for_surface, error);
      return step_record_word(db, step, 2, add(header::ft(h, step), -6), value, error);
    case 'R':
      if (missing(db, db.force_file_open)) return fail(no_force_file_for_reaction, error);
      return nodal_component(db, force, add(header::fb(h, step), node_word(h, entry, 0)), parameter, true, value,
                             error);
    case 'X': case 'Y': case 'Z': case 'O': case '1': case '2': {
      // Vessel `element`'s record behind the step record: places 1 to 6.
      const bool translation = letter == 'X' || letter == 'Y' || letter == 'Z';
      if (!db.motion_file_open) {
        if (translation && missing(db, false)) fail(no_motion_file_for_vessel, error);
        return;
      }
      const int32_t place = static_cast<int32_t>(std::string_view("XYZO12").find(letter)) + 1;
      const int64_t word = add(header::tb(h, step), 8 * (int64_t{element} - 1) + place);
      return db.readin(motion, word, value, error);
    }
    case 'P':
      return step_record_word(db, step, 3, add(header::fe(h, step), -5), value, error);
    case 'W':
      return height_above_seabed(db, step, entry, value, error);
    case 'G':
      return entry_word(db, add(ma(h, step), 9 * (int64_t{entry} - 1)), 9, parameter, value, error);
    case 'H': {
      const int64_t section = add(ma(h, step), guide_words(h));
      return entry_word(db, add(section, 6 * (int64_t{entry} - 1)), 6, parameter, value, error);
    }
    case 'C': {
      // 7 or 8 words a node, by the format.
      const int64_t section = add(add(ma(h, step), guide_words(h)), zero_gap_words(h));
      const int32_t words = h.node_contact_words == 7 ? 7 : 8;
      return entry_word(db, add(section, words * (int64_t{entry} - 1)), static_cast<std::size_t>(words), parameter,
                        value, error);
    }
    case 'K': {
      // The auxiliary node section. The three words are read without a test
      // in between, so only the last read's outcome stays in `error`; a word
      // whose read failed counts as 0.
      const int64_t section = aux_node_base(h, step);
      std::array<float, 3> w{};
      for (int32_t p = 1; p <= 3; ++p) {
        db.readin(motion, add(section, node_word(h, entry, p)), w[static_cast<std::size_t>(p - 1)], error);
      }
      if (error) return;
      if (parameter >= 1 && parameter <= 3) value = w[static_cast<std::size_t>(parameter - 1)];
      return;
    }
    case 'B':
      return step_record_word(db, step, 5, add(header::fe(h, step), -3), value, error);
    default:
      return;  // not a kind letter: nothing
  }
}

}  // namespace tmrdar::results
