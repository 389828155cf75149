#include "results/requests.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "frame/base/error_handling.h"
#include "frame/base/request_mask.h"
#include "results/derived_results.h"
#include "results/frame_sections.h"
#include "results/letter_lookup.h"

namespace tmrdar::results {
namespace {

using header::frame_words::ADD;
using header::frame_words::MUL;
namespace MASK = REVISION_IDS;

// The letter of each output type that a letter lookup serves.
constexpr char TYPE_LETTER[19] = {' ', 'T', 'P', 'S', 'B', 'D', 'V', 'A', 'G', 'H', 'C', ' ', 'K', 'R',
                                  ' ', ' ', ' ', 'E', ' '};

// Force parameters of the request parameters 1 to 14 of output type 17.
constexpr int32_t FORCE_PARAMETER[15] = {0, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 24, 25, 28, 29};

bool FLAG(const header::HEADER_VARIABLES& h, int i) { return h.OUTPUT_FLAGS[static_cast<std::size_t>(i - 1)] == 1; }

// Whether the frames hold what an element force request parameter needs.
bool ELEMENT_CONTENTS(const header::HEADER_VARIABLES& h, int32_t parameter) {
  switch (parameter) {
    case 1: case 2: case 3: case 4: case 5: case 6: case 7: return FLAG(h, parameter + 4);
    case 8: return FLAG(h, 9) && FLAG(h, 10);
    case 9: return FLAG(h, 12) && FLAG(h, 13);
    case 10: return FLAG(h, 6) && FLAG(h, 7);
    case 11: return FLAG(h, 12);
    case 12: return FLAG(h, 13);
    case 13: return FLAG(h, 14);
    case 14: return FLAG(h, 15);
    default: return true;
  }
}

// The contact sections of a force frame, with or without its clashing forces.
int64_t CONTACT_REACTION_WORDS(const header::HEADER_VARIABLES& h, bool with_clashes) {
  return GUIDE_REACTION_WORDS(h) + ZERO_GAP_REACTION_WORDS(h) + PIP_REACTION_WORDS(h) +
         (with_clashes ? CLASH_FORCE_WORDS(h) : 0);
}

// The word of a force frame behind its reaction and contact sections (with
// or without the clashing forces) and `sections` element sections.
int64_t FORCE_BASE(const header::HEADER_VARIABLES& h, int32_t step, bool with_clashes, int64_t sections) {
  const int64_t f4 = h.OUTPUT_FLAGS[3];
  int64_t word = header::FB(h, step);
  word = ADD(word, MUL(CONTACT_REACTION_WORDS(h, with_clashes), f4));
  word = ADD(word, BOUNDARY_REACTION_WORDS(h));
  return ADD(word, MUL(MUL(8, R3(h)), sections));
}

// The word of an element's temperature, behind every contact section.
int64_t TEMPERATURE_WORD(const header::HEADER_VARIABLES& h, int32_t step, int32_t element, int32_t location) {
  return ADD(FORCE_BASE(h, step, true, ELEMENT_FLAG_SUM(h)), ADD(MUL(3, element), int64_t{location} - 3));
}

// Output type 17 in the formats that number force parameters as requests
// do: 1 to 9 by letter E with the same number, 10 the resultant of 2 and 3,
// 11 and 12 the sections of flags 12 and 13 (E's 16 and 17), 13 the section
// of flag 14 and 14 the temperature. Returns the lookup's error flag.
bool REQUEST_NUMBERED_ELEMENT_RESULT(header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request,
                                     const REQUEST_POSITIONS& at, int32_t step, float& value) {
  bool error = false;
  const int32_t p = request.PARAMETER;
  const int32_t location = request.LOCATION;
  if (p >= 1 && p <= 9) {
    DABFND(db, step, at.ELEMENT, location, p, 'E', value, error);
  } else if (p == 10) {
    float a = 0.0F;
    float b = 0.0F;
    DABFND(db, step, at.ELEMENT, location, 2, 'E', a, error);
    if (!error) DABFND(db, step, at.ELEMENT, location, 3, 'E', b, error);
    if (!error) value = std::sqrt(a * a + b * b);
  } else if (p == 11 || p == 12) {
    DABFND(db, step, at.ELEMENT, location, p + 5, 'E', value, error);
  } else if (p == 13) {
    READF(db, step, at.ELEMENT, location, 10, value, error);  // section index 14
  } else if (p == 14) {
    db.READIN(2, TEMPERATURE_WORD(db, step, at.ELEMENT, location), value, error);
  }
  return error;
}

// One step of a request whose positions are known. Returns the lookup's
// error flag.
bool LOOKUP(header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request, const REQUEST_POSITIONS& at,
            int32_t step, float& value) {
  bool error = false;
  const int32_t type = request.OUTPUT_TYPE;
  const int32_t p = request.PARAMETER;
  switch (type) {
    case 1: case 2: case 3: case 4: case 5: case 6: case 7: case 8: case 9: case 10: case 12: case 13:
      DABFND(db, step, at.ELEMENT, at.ENTRY, p, TYPE_LETTER[type], value, error);
      return error;
    case 11: {
      // One word of the clashing results: the motion frame's section, or
      // the force frame's clashing forces behind its contact sections.
      int32_t status = 0;
      RETRIEVE_CLASHING_RESULTS(db, step, at.ENTRY, p, value, status);
      return (status & 1) != 0;
    }
    case 14: case 15: case 16: {
      int32_t status = 0;
      if (type == 14) CALCULATE_CONTACT_REACTIONS(db, step, at.ENTRY, p, value, status);
      if (type == 15) CALCULATE_ZG_GUIDE_REACTIONS(db, step, at.ENTRY, p, value, status);
      if (type == 16) CALCULATE_PIP_REACTIONS(db, step, at.ENTRY, p, value, status);
      return (status & 1) != 0;
    }
    case 17: {
      if (db.VERSION.FORCE_PARAMETERS == header::FORCE_NUMBERING::SECTION_BY_PARAMETER) {
        return REQUEST_NUMBERED_ELEMENT_RESULT(db, request, at, step, value);
      }
      const int32_t force = p >= 1 && p <= 14 ? FORCE_PARAMETER[p] : 0;
      if (force == 28) {
        READF(db, step, at.ELEMENT, request.LOCATION, force, value, error);
      } else if (force == 29) {
        db.READIN(2, TEMPERATURE_WORD(db, step, at.ELEMENT, request.LOCATION), value, error);
      } else if (force != 0) {
        DABFND(db, step, at.ELEMENT, request.LOCATION, force, 'E', value, error);
      }
      return error;
    }
    case 18: {
      // Only the newest format tests the flag again at the read.
      if (db.VERSION.PRESSURE_FLAG_TEST && !FLAG(db, 16)) {
        ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "Database does not contain pressure data.");
        return true;
      }
      const int64_t k = p == 0 ? 1 : p;
      const int64_t sections = ELEMENT_FLAG_SUM(db) + db.OUTPUT_FLAGS[14];
      const int64_t word = ADD(FORCE_BASE(db, step, true, sections),
                               ADD(ADD(MUL(6, at.ELEMENT), MUL(2, request.LOCATION)), k - 8));
      db.READIN(2, word, value, error);
      return error;
    }
    default:
      return false;
  }
}

// Whether each step of a request is one word of its frame, read by READIN
// and given as it is: a stored nodal motion component (displacement,
// velocity, acceleration), an element's pressure, or its temperature.
bool ONE_WORD_A_STEP(const header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request) {
  const int32_t type = request.OUTPUT_TYPE;
  const int32_t p = request.PARAMETER;
  if (type >= 5 && type <= 7) {
    const int64_t stored = db.VERSION.COMPONENTS_BY_DOFS ? db.DOFS_PER_NODE : 6;
    return p >= 1 && p <= stored;
  }
  if (type == 18) return true;
  if (type == 17) {
    if (db.VERSION.FORCE_PARAMETERS == header::FORCE_NUMBERING::SECTION_BY_PARAMETER) return p == 14;
    return p == 14 && FORCE_PARAMETER[14] == 29;
  }
  return false;
}

}  // namespace

void VALIDATE_HISTORY_PARAM(const header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request,
                            REQUEST_POSITIONS& positions, int32_t& status) {
  positions = REQUEST_POSITIONS{};
  const int32_t type = request.OUTPUT_TYPE;
  const int32_t number = request.NODE;
  if (type < 5) return;

  if (type <= 16) {
    bool refused = false;
    int32_t& entry = positions.ENTRY;
    const auto within = [&](int32_t count) {
      if (number > count) {
        refused = true;
      } else {
        entry = number;
      }
    };
    switch (type) {
      case 5: case 6: case 7: case 10: entry = db.POST_NODE_CODING(number); break;
      case 13: {
        const int32_t row = db.POST_NODE_CODING(number);
        if (row != 0) {
          const int32_t internal = db.TABLES.NODE_NUMBERS(row, 1);
          entry = db.TABLES.BOUNDARY_CONDITION_INDEX.FIND(internal);
          refused = entry == 0;
        }
        break;
      }
      case 8: case 14: within(db.NUM_GUIDE_SURFACES); break;
      case 9: case 15: within(db.NUM_ZERO_GAP_GUIDES); break;
      case 11: within(db.NUM_CLASH_PAIRS); break;
      case 12: entry = db.POST_AUX_NODE_CODING(number); break;
      case 16: within(db.NUM_PIP_CONNECTIONS); break;
      default: break;
    }
    if (refused) entry = 0;
    if (entry == 0) status += MASK::ITEM_NOT_FOUND;

    bool held = true;
    switch (type) {
      case 5: held = FLAG(db, 1); break;
      case 6: held = FLAG(db, 2); break;
      case 7: held = FLAG(db, 3); break;
      case 11: held = (request.PARAMETER != 2 && request.PARAMETER != 3) || FLAG(db, 4); break;
      case 13: case 14: case 15: case 16: held = FLAG(db, 4); break;
      default: break;
    }
    if (!held) status += MASK::OUTPUT_NOT_WRITTEN;
    return;
  }

  if (type <= 18) {
    positions.ELEMENT = db.POST_ELEM_CODING(request.ELEMENT);
    if (positions.ELEMENT == 0) status += MASK::ELEMENT_NOT_FOUND;
    if (request.LOCATION < 1 || request.LOCATION > 3) status += MASK::POSITION_BAD;
    const bool held = type == 17 ? ELEMENT_CONTENTS(db, request.PARAMETER) : FLAG(db, 16);
    if (!held) status += MASK::OUTPUT_NOT_WRITTEN;
  }
}

void GETREQUESTEDSINGLEVALUE(header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request, int32_t step,
                             float& value, int32_t& status) {
  value = 0.0F;
  REQUEST_POSITIONS positions;
  VALIDATE_HISTORY_PARAM(db, request, positions, status);
  if (status > 0) return;
  if (LOOKUP(db, request, positions, step, value)) status += MASK::READ_FAILED;
}

void GETREQUESTEDHISTORY(header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request, std::span<float> values,
                         int32_t& status) {
  std::fill(values.begin(), values.end(), 0.0F);
  REQUEST_POSITIONS positions;
  VALIDATE_HISTORY_PARAM(db, request, positions, status);
  if (status > 0) return;
  std::size_t start = 0;
  if (values.size() >= 3 && ONE_WORD_A_STEP(db, request)) {
    // The first two steps are looked up as every step is, with their reads
    // logged: one word each, one frame apart, and the value that word itself.
    // Then the word of every step is known, and the rest are gathered.
    std::vector<std::pair<int32_t, int64_t>> log;
    db.READ_LOG = &log;
    bool failed = false;
    for (; start < 2 && !failed; ++start) {
      failed = LOOKUP(db, request, positions, static_cast<int32_t>(start + 1), values[start]);
    }
    db.READ_LOG = nullptr;
    if (failed) {
      status += MASK::READ_FAILED;
      return;
    }
    if (log.size() == 2 && log[0].first == log[1].first) {
      const int32_t file = log[0].first;
      const int64_t stride = log[1].second - log[0].second;
      const int64_t frame = file == 1 ? header::ME(db, 2) - header::ME(db, 1) : header::FE(db, 2) - header::FE(db, 1);
      if (stride == frame && db.GATHER_WORDS(file, log[1].second, stride, values.subspan(1))) {
        return;
      }
    }
  }
  for (std::size_t i = start; i < values.size(); ++i) {
    if (LOOKUP(db, request, positions, static_cast<int32_t>(i + 1), values[i])) {
      status += MASK::READ_FAILED;
      return;
    }
  }
}

}  // namespace tmrdar::results
