#include "results/requests.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frame/base/error_handling.h"
#include "frame/base/request_mask.h"
#include "results/derived_results.h"
#include "results/frame_sections.h"
#include "results/letter_lookup.h"

namespace tmrdar::results {
namespace {

using header::frame_words::add;
using header::frame_words::mul;
namespace mask = request_checks;

// The letter of each output type that a letter lookup serves.
constexpr char type_letter[19] = {' ', 'T', 'P', 'S', 'B', 'D', 'V', 'A', 'G', 'H', 'C', ' ', 'K', 'R',
                                  ' ', ' ', ' ', 'E', ' '};

// Force parameters of the request parameters 1 to 14 of output type 17.
constexpr int32_t force_parameter[15] = {0, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 24, 25, 28, 29};

bool flag(const header::HeaderVariables& h, int i) { return h.output_flags[static_cast<std::size_t>(i - 1)] == 1; }

// Whether the frames hold what an element force request parameter needs.
bool element_contents(const header::HeaderVariables& h, int32_t parameter) {
  switch (parameter) {
    case 1: case 2: case 3: case 4: case 5: case 6: case 7: return flag(h, parameter + 4);
    case 8: return flag(h, 9) && flag(h, 10);
    case 9: return flag(h, 12) && flag(h, 13);
    case 10: return flag(h, 6) && flag(h, 7);
    case 11: return flag(h, 12);
    case 12: return flag(h, 13);
    case 13: return flag(h, 14);
    case 14: return flag(h, 15);
    default: return true;
  }
}

// The contact sections of a force frame, with or without its clashing forces.
int64_t contact_reaction_words(const header::HeaderVariables& h, bool with_clashes) {
  return guide_reaction_words(h) + zero_gap_reaction_words(h) + pip_reaction_words(h) +
         (with_clashes ? clash_force_words(h) : 0);
}

// The word of a force frame behind its reaction and contact sections (with
// or without the clashing forces) and `sections` element sections.
int64_t force_base(const header::HeaderVariables& h, int32_t step, bool with_clashes, int64_t sections) {
  const int64_t f4 = h.output_flags[3];
  int64_t word = header::fb(h, step);
  word = add(word, mul(contact_reaction_words(h, with_clashes), f4));
  word = add(word, boundary_reaction_words(h));
  return add(word, mul(mul(8, r3(h)), sections));
}

// The word of an element's temperature, behind every contact section.
int64_t temperature_word(const header::HeaderVariables& h, int32_t step, int32_t element, int32_t location) {
  return add(force_base(h, step, true, element_flag_sum(h)), add(mul(3, element), int64_t{location} - 3));
}

// Output type 17 in the formats that number force parameters as requests
// do: 1 to 9 by letter E with the same number, 10 the resultant of 2 and 3,
// 11 and 12 the sections of flags 12 and 13 (E's 16 and 17), 13 the section
// of flag 14 and 14 the temperature. Returns the lookup's error flag.
bool request_numbered_element_result(header::FormatReader& db, const RequestArguments& request,
                                     const RequestPositions& at, int32_t step, float& value) {
  bool error = false;
  const int32_t p = request.parameter;
  const int32_t location = request.location;
  if (p >= 1 && p <= 9) {
    dabfnd(db, step, at.element, location, p, 'E', value, error);
  } else if (p == 10) {
    float a = 0.0F;
    float b = 0.0F;
    dabfnd(db, step, at.element, location, 2, 'E', a, error);
    if (!error) dabfnd(db, step, at.element, location, 3, 'E', b, error);
    if (!error) value = std::sqrt(a * a + b * b);
  } else if (p == 11 || p == 12) {
    dabfnd(db, step, at.element, location, p + 5, 'E', value, error);
  } else if (p == 13) {
    readf(db, step, at.element, location, 10, value, error);  // section index 14
  } else if (p == 14) {
    db.readin(2, temperature_word(db, step, at.element, location), value, error);
  }
  return error;
}

// One step of a request whose positions are known. Returns the lookup's
// error flag.
bool lookup(header::FormatReader& db, const RequestArguments& request, const RequestPositions& at,
            int32_t step, float& value) {
  bool error = false;
  const int32_t type = request.output_type;
  const int32_t p = request.parameter;
  switch (type) {
    case 1: case 2: case 3: case 4: case 5: case 6: case 7: case 8: case 9: case 10: case 12: case 13:
      dabfnd(db, step, at.element, at.entry, p, type_letter[type], value, error);
      return error;
    case 11: {
      // One word of the clashing results: the motion frame's section, or
      // the force frame's clashing forces behind its contact sections.
      int32_t status = 0;
      retrieve_clashing_results(db, step, at.entry, p, value, status);
      return (status & 1) != 0;
    }
    case 14: case 15: case 16: {
      int32_t status = 0;
      if (type == 14) calculate_contact_reactions(db, step, at.entry, p, value, status);
      if (type == 15) calculate_zg_guide_reactions(db, step, at.entry, p, value, status);
      if (type == 16) calculate_pip_reactions(db, step, at.entry, p, value, status);
      return (status & 1) != 0;
    }
    case 17: {
      if (db.version.force_parameters == header::ForceNumbering::section_by_parameter) {
        return request_numbered_element_result(db, request, at, step, value);
      }
      const int32_t force = p >= 1 && p <= 14 ? force_parameter[p] : 0;
      if (force == 28) {
        readf(db, step, at.element, request.location, force, value, error);
      } else if (force == 29) {
        db.readin(2, temperature_word(db, step, at.element, request.location), value, error);
      } else if (force != 0) {
        dabfnd(db, step, at.element, request.location, force, 'E', value, error);
      }
      return error;
    }
    case 18: {
      // Only the newest format tests the flag again at the read.
      if (db.version.pressure_flag_test && !flag(db, 16)) {
        error_handling::error3(true, error_handling::database_postprocessing, "Database does not contain pressure data.");
        return true;
      }
      const int64_t k = p == 0 ? 1 : p;
      const int64_t sections = element_flag_sum(db) + db.output_flags[14];
      const int64_t word = add(force_base(db, step, true, sections),
                               add(add(mul(6, at.element), mul(2, request.location)), k - 8));
      db.readin(2, word, value, error);
      return error;
    }
    default:
      return false;
  }
}

// Whether each step of a request is one word of its frame, read by readin
// and given as it is: a stored nodal motion component (displacement,
// velocity, acceleration), an element's pressure, or its temperature.
bool one_word_a_step(const header::FormatReader& db, const RequestArguments& request) {
  const int32_t type = request.output_type;
  const int32_t p = request.parameter;
  if (type >= 5 && type <= 7) {
    const int64_t stored = db.version.components_by_dofs ? db.dofs_per_node : 6;
    return p >= 1 && p <= stored;
  }
  if (type == 18) return true;
  if (type == 17) {
    if (db.version.force_parameters == header::ForceNumbering::section_by_parameter) return p == 14;
    return p == 14 && force_parameter[14] == 29;
  }
  return false;
}

}  // namespace

void validate_history_param(const header::FormatReader& db, const RequestArguments& request,
                            RequestPositions& positions, int32_t& status) {
  positions = RequestPositions{};
  const int32_t type = request.output_type;
  const int32_t number = request.node;
  if (type < 5) return;

  if (type <= 16) {
    bool refused = false;
    int32_t& entry = positions.entry;
    const auto within = [&](int32_t count) {
      if (number > count) {
        refused = true;
      } else {
        entry = number;
      }
    };
    switch (type) {
      case 5: case 6: case 7: case 10: entry = db.post_node_coding(number); break;
      case 13: {
        const int32_t row = db.post_node_coding(number);
        if (row != 0) {
          const int32_t internal = db.tables.node_numbers(row, 1);
          entry = db.tables.boundary_condition_index.find(internal);
          refused = entry == 0;
        }
        break;
      }
      case 8: case 14: within(db.num_guide_surfaces); break;
      case 9: case 15: within(db.num_zero_gap_guides); break;
      case 11: within(db.num_clash_pairs); break;
      case 12: entry = db.post_aux_node_coding(number); break;
      case 16: within(db.num_pip_connections); break;
      default: break;
    }
    if (refused) entry = 0;
    if (entry == 0) status += mask::item_not_found;

    bool held = true;
    switch (type) {
      case 5: held = flag(db, 1); break;
      case 6: held = flag(db, 2); break;
      case 7: held = flag(db, 3); break;
      case 11: held = (request.parameter != 2 && request.parameter != 3) || flag(db, 4); break;
      case 13: case 14: case 15: case 16: held = flag(db, 4); break;
      default: break;
    }
    if (!held) status += mask::output_not_written;
    return;
  }

  if (type <= 18) {
    positions.element = db.post_elem_coding(request.element);
    if (positions.element == 0) status += mask::element_not_found;
    if (request.location < 1 || request.location > 3) status += mask::position_bad;
    const bool held = type == 17 ? element_contents(db, request.parameter) : flag(db, 16);
    if (!held) status += mask::output_not_written;
  }
}

void getrequestedsinglevalue(header::FormatReader& db, const RequestArguments& request, int32_t step,
                             float& value, int32_t& status) {
  value = 0.0F;
  RequestPositions positions;
  validate_history_param(db, request, positions, status);
  if (status > 0) return;
  if (lookup(db, request, positions, step, value)) status += mask::read_failed;
}

void getrequestedhistory(header::FormatReader& db, const RequestArguments& request, std::span<float> values,
                         int32_t& status) {
  std::fill(values.begin(), values.end(), 0.0F);
  RequestPositions positions;
  validate_history_param(db, request, positions, status);
  if (status > 0) return;
  std::size_t start = 0;
  if (values.size() >= 3 && one_word_a_step(db, request)) {
    // The first two steps are looked up as every step is, with their reads
    // logged: one word each, one frame apart, and the value that word itself.
    // Then the word of every step is known, and the rest are gathered.
    header::FormatReader::ReadLog log;
    db.read_log = &log;
    bool failed = false;
    for (; start < 2 && !failed; ++start) {
      failed = lookup(db, request, positions, static_cast<int32_t>(start + 1), values[start]);
    }
    db.read_log = nullptr;
    if (failed) {
      status += mask::read_failed;
      return;
    }
    const auto& [first, second] = log.reads;
    if (log.count == 2 && first.first == second.first) {
      const int32_t file = first.first;
      const int64_t stride = second.second - first.second;
      const int64_t frame = file == 1 ? header::me(db, 2) - header::me(db, 1) : header::fe(db, 2) - header::fe(db, 1);
      if (stride == frame && db.gather_words(file, second.second, stride, values.subspan(1))) {
        return;
      }
    }
  }
  for (std::size_t i = start; i < values.size(); ++i) {
    if (lookup(db, request, positions, static_cast<int32_t>(i + 1), values[i])) {
      status += mask::read_failed;
      return;
    }
  }
}

}  // namespace tmrdar::results
