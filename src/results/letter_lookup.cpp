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

using header::frame_words::ADD;
using header::frame_words::MUL;


constexpr std::string_view NO_FORCE_FILE =
    "A force result was requested but the Force Database (*.dbf) does not exist.";
constexpr std::string_view NO_NODAL_MOTION = "Database does not contain nodal motion data.";
constexpr std::string_view NO_MOTION_FILE_FOR_MOTION =
    "Nodal motion was requested but the Motion Database (*.dbm) does not exist.";
constexpr std::string_view NO_NODAL_VELOCITY = "Database does not contain nodal velocity data.";
constexpr std::string_view NO_MOTION_FILE_FOR_VELOCITY =
    "Nodal velocity was requested but the Motion Database (*.dbm) does not exist.";
constexpr std::string_view NO_NODAL_ACCELERATION = "Database does not contain nodal acceleration data.";
constexpr std::string_view NO_MOTION_FILE_FOR_ACCELERATION =
    "Nodal acceleration was requested but the Motion Database (*.dbm) does not exist.";
constexpr std::string_view NO_DATABASE_FOR_SURFACE =
    "Water surface elevation was requested but no database (*.dbm / *.dbf) exists.";
constexpr std::string_view NO_FORCE_FILE_FOR_REACTION =
    "A reaction was requested but the Force Database (*.dbf) does not exist.";
constexpr std::string_view NO_MOTION_FILE_FOR_VESSEL =
    "Vessel motion was requested but the Motion Database (*.dbm) does not exist.";

// The largest inverse of a force resultant, and what a resultant too small
// to invert gives: the 32-bit real nearest 999.999.
constexpr float INVERSE_LIMIT = 999.999F;

void FAIL(std::string_view text, bool& error) {
  ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, text);
  error = true;
}

// Square root of the sum of the squares of three components, in 32 bits.
float MAGNITUDE(float a, float b, float c) { return std::sqrt(a * a + b * b + c * c); }
float MAGNITUDE(float a, float b) { return std::sqrt(a * a + b * b); }

// A nodal entry of a motion section or of the reaction section, whose words
// stand behind `base`: the parameters up to the stored components' count are
// those components, the next the magnitude of components 4 to 6, and the one
// after it, where `with_8`, that of components 1 to 3. The stored components
// are 6, or DOFS_PER_NODE in the formats that number them so. Each component
// read goes to `value` first, so a failure leaves the last one read there.
// Any other parameter gives nothing.
void NODAL_COMPONENT(header::TIDE3_DATABASE_FILES& db, int32_t file, int64_t entry_base, int32_t parameter,
                     bool with_8, float& value, bool& error) {
  const int64_t stored = db.VERSION.COMPONENTS_BY_DOFS ? db.DOFS_PER_NODE : 6;
  if (parameter >= 1 && parameter <= stored) {
    db.READIN(file, ADD(entry_base, parameter), value, error);
    return;
  }
  int32_t first = 0;
  if (parameter == stored + 1) first = 4;
  if (parameter == stored + 2 && with_8) first = 1;
  if (first == 0) return;
  std::array<float, 3> c{};
  for (int32_t k = 0; k < 3; ++k) {
    db.READIN(file, ADD(entry_base, first + k), value, error);
    if (error) return;
    c[static_cast<std::size_t>(k)] = value;
  }
  value = MAGNITUDE(c[0], c[1], c[2]);
}

// The resultant of the force parameters `first` and `second` of one element
// location, each read through READF; false, with the failure reported, when
// either read fails.
bool FORCE_RESULTANT(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t element, int32_t location,
                     int32_t first, int32_t second, float& r, bool& error) {
  float a = 0.0F;
  float b = 0.0F;
  READF(db, step, element, location, first, a, error);
  if (error) return false;
  READF(db, step, element, location, second, b, error);
  if (error) return false;
  r = MAGNITUDE(a, b);
  return true;
}

// The inverse of a resultant, at most INVERSE_LIMIT. Any positive resultant
// is inverted; the limit then catches what is too large.
float INVERSE(float r) { return std::min(r > 0.0F ? 1.0F / r : INVERSE_LIMIT, INVERSE_LIMIT); }

// Letter E in the formats that number force parameters as requests do:
// 1 to 7 the sections of flags 5 to 11, then, counted from DOFS_PER_NODE,
// the resultants of the sections of flags 9 and 10 and of flags 12 and 13;
// 15 the inverse of the second, 16 and 17 its two sections alone.
void REQUEST_NUMBERED_ELEMENT_FORCE(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t element, int32_t location,
                                    int32_t parameter, float& value, bool& error) {
  const int64_t dofs = db.DOFS_PER_NODE;
  float r = 0.0F;
  if (parameter >= 1 && parameter <= 7) {
    READF(db, step, element, location, parameter, value, error);
  } else if (parameter == dofs + 2) {
    if (FORCE_RESULTANT(db, step, element, location, 5, 6, r, error)) value = r;
  } else if (parameter == dofs + 3) {
    if (FORCE_RESULTANT(db, step, element, location, 8, 9, r, error)) value = r;
  } else if (parameter == 15) {
    // The test is r <= 0 here, so a resultant that is not a number is
    // inverted and stays not a number.
    if (FORCE_RESULTANT(db, step, element, location, 8, 9, r, error)) {
      value = std::min(r <= 0.0F ? INVERSE_LIMIT : 1.0F / r, INVERSE_LIMIT);
    }
  } else if (parameter == 16 || parameter == 17) {
    READF(db, step, element, location, parameter - 8, value, error);
  }
}

// Letter E: the force parameters of an element location.
void ELEMENT_FORCE(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t element, int32_t location,
                   int32_t parameter, float& value, bool& error) {
  const header::FORCE_NUMBERING numbering = db.VERSION.FORCE_PARAMETERS;
  if (db.VERSION.MISSING_FILE_MESSAGES && !db.FORCE_FILE_OPEN) return FAIL(NO_FORCE_FILE, error);
  if (numbering == header::FORCE_NUMBERING::SECTION_BY_PARAMETER) {
    return REQUEST_NUMBERED_ELEMENT_FORCE(db, step, element, location, parameter, value, error);
  }
  // The formats whose table stops at the pressures have no parameters 37 to 43.
  if (numbering == header::FORCE_NUMBERING::TABLE_TO_SECTION_16 && parameter >= 37) return;
  float r = 0.0F;
  switch (parameter) {
    case 9: case 10: case 11: case 12: case 13: case 14: case 15:
    case 24: case 25:
    case 37: case 38: case 39: case 40: case 41:
      READF(db, step, element, location, parameter, value, error);
      return;
    case 16:
      if (FORCE_RESULTANT(db, step, element, location, 13, 14, r, error)) value = r;
      return;
    case 17:
      if (FORCE_RESULTANT(db, step, element, location, 24, 25, r, error)) value = r;
      return;
    case 23:
      if (FORCE_RESULTANT(db, step, element, location, 24, 25, r, error)) value = INVERSE(r);
      return;
    case 42:
      if (FORCE_RESULTANT(db, step, element, location, 38, 39, r, error)) value = r;
      return;
    case 43:
      // Here the resultant is compared, widened, with a 64-bit threshold.
      if (FORCE_RESULTANT(db, step, element, location, 38, 39, r, error)) {
        value = std::min(static_cast<double>(r) > 1e-10 ? 1.0F / r : INVERSE_LIMIT, INVERSE_LIMIT);
      }
      return;
    default:
      return;  // 18 to 22 and 26 to 36 among them: nothing is read
  }
}

// A word of the step record: from the motion frame when the motion file is
// open, else `force_word` of the force frame; with neither, nothing.
void STEP_RECORD_WORD(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t place, int64_t force_word,
                      float& value, bool& error) {
  if (db.MOTION_FILE_OPEN) {
    db.READIN(MOTION, ADD(header::TB(db, step), place - 8), value, error);
  } else if (db.FORCE_FILE_OPEN) {
    db.READIN(FORCE, force_word, value, error);
  }
}

// Letter W: the vertical displacement of a node above the sea floor under it.
void HEIGHT_ABOVE_SEABED(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry, float& value, bool& error) {
  if (db.OUTPUT_FLAGS[0] != 1) return FAIL(NO_NODAL_MOTION, error);
  std::array<float, 3> c{};
  for (int32_t p = 1; p <= 3; ++p) {
    db.READIN(MOTION, ADD(header::MB(db, step), NODE_WORD(db, entry, p)), c[static_cast<std::size_t>(p - 1)], error);
    if (error) return;
  }
  double height = 0.0;
  if (db.SEABED_PROFILE.GEOMETRY() != 0) {
    db.SEABED_PROFILE.HEIGHT(static_cast<double>(c[1]), static_cast<double>(c[2]), height);
  }
  value = static_cast<float>(static_cast<double>(c[0]) - height);
}

// A lookup in a file that does not exist is reported where the format has
// words for it.
bool MISSING(const header::TIDE3_DATABASE_FILES& db, bool open) { return !open && db.VERSION.MISSING_FILE_MESSAGES; }

// Letters G, H, C: one word of a whole entry read as a run of `count` words
// behind `entry_base`, so that the next word of the same entry is served
// from the kept records. A parameter outside 1 to `count` gives nothing.
void ENTRY_WORD(header::TIDE3_DATABASE_FILES& db, int64_t entry_base, std::size_t count, int32_t parameter,
                float& value, bool& error) {
  std::array<float, 9> work{};
  db.READIN_ARRAY(MOTION, ADD(entry_base, 1), std::span<float>(work.data(), count), error);
  if (error) return;
  if (parameter >= 1 && static_cast<std::size_t>(parameter) <= count) {
    value = work[static_cast<std::size_t>(parameter - 1)];
  }
}

}  // namespace

void DABFND(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t element, int32_t entry, int32_t parameter,
            char letter, float& value, bool& error) {
  error = false;
  const HEADER_VARIABLES& h = db;
  const std::array<int32_t, header::NUM_OUTPUT_FLAGS>& flag = h.OUTPUT_FLAGS;

  switch (letter) {
    case 'T':
      return STEP_RECORD_WORD(db, step, 1, ADD(header::FE(h, step), -7), value, error);
    case 'E':
      return ELEMENT_FORCE(db, step, element, entry, parameter, value, error);
    case 'D':
      if (flag[0] != 1) return FAIL(NO_NODAL_MOTION, error);
      if (MISSING(db, db.MOTION_FILE_OPEN)) return FAIL(NO_MOTION_FILE_FOR_MOTION, error);
      return NODAL_COMPONENT(db, MOTION, ADD(header::MB(h, step), NODE_WORD(h, entry, 0)), parameter, false,
                             value, error);
    case 'V': {
      if (flag[1] != 1) return FAIL(NO_NODAL_VELOCITY, error);
      if (MISSING(db, db.MOTION_FILE_OPEN)) return FAIL(NO_MOTION_FILE_FOR_VELOCITY, error);
      const int64_t section = ADD(header::MB(h, step), MUL(flag[0], NODAL_WORDS(h)));
      return NODAL_COMPONENT(db, MOTION, ADD(section, NODE_WORD(h, entry, 0)), parameter, true, value, error);
    }
    case 'A': {
      if (flag[2] != 1) return FAIL(NO_NODAL_ACCELERATION, error);
      if (MISSING(db, db.MOTION_FILE_OPEN)) return FAIL(NO_MOTION_FILE_FOR_ACCELERATION, error);
      const int64_t section = ADD(header::MB(h, step), MUL(int64_t{flag[0]} + flag[1], NODAL_WORDS(h)));
      return NODAL_COMPONENT(db, MOTION, ADD(section, NODE_WORD(h, entry, 0)), parameter, true, value, error);
    }
    case 'S':
      // Unlike T, P and B, the force frame's step record is found ahead of
      // the damper records (which only the newest format has).
      if (MISSING(db, db.MOTION_FILE_OPEN || db.FORCE_FILE_OPEN)) return FAIL(NO_DATABASE_FOR_SURFACE, error);
      return STEP_RECORD_WORD(db, step, 2, ADD(header::FT(h, step), -6), value, error);
    case 'R':
      if (MISSING(db, db.FORCE_FILE_OPEN)) return FAIL(NO_FORCE_FILE_FOR_REACTION, error);
      return NODAL_COMPONENT(db, FORCE, ADD(header::FB(h, step), NODE_WORD(h, entry, 0)), parameter, true, value,
                             error);
    case 'X': case 'Y': case 'Z': case 'O': case '1': case '2': {
      // Vessel `element`'s record behind the step record: places 1 to 6.
      const bool translation = letter == 'X' || letter == 'Y' || letter == 'Z';
      if (!db.MOTION_FILE_OPEN) {
        if (translation && MISSING(db, false)) FAIL(NO_MOTION_FILE_FOR_VESSEL, error);
        return;
      }
      const int32_t place = static_cast<int32_t>(std::string_view("XYZO12").find(letter)) + 1;
      const int64_t word = ADD(header::TB(h, step), 8 * (int64_t{element} - 1) + place);
      return db.READIN(MOTION, word, value, error);
    }
    case 'P':
      return STEP_RECORD_WORD(db, step, 3, ADD(header::FE(h, step), -5), value, error);
    case 'W':
      return HEIGHT_ABOVE_SEABED(db, step, entry, value, error);
    case 'G':
      return ENTRY_WORD(db, ADD(MA(h, step), 9 * (int64_t{entry} - 1)), 9, parameter, value, error);
    case 'H': {
      const int64_t section = ADD(MA(h, step), GUIDE_WORDS(h));
      return ENTRY_WORD(db, ADD(section, 6 * (int64_t{entry} - 1)), 6, parameter, value, error);
    }
    case 'C': {
      // 7 or 8 words a node, by the format.
      const int64_t section = ADD(ADD(MA(h, step), GUIDE_WORDS(h)), ZERO_GAP_WORDS(h));
      const int32_t words = h.NODE_CONTACT_WORDS == 7 ? 7 : 8;
      return ENTRY_WORD(db, ADD(section, words * (int64_t{entry} - 1)), static_cast<std::size_t>(words), parameter,
                        value, error);
    }
    case 'K': {
      // The auxiliary node section. The three words are read without a test
      // in between, so only the last read's outcome stays in `error`; a word
      // whose read failed counts as 0.
      const int64_t section = AUX_NODE_BASE(h, step);
      std::array<float, 3> w{};
      for (int32_t p = 1; p <= 3; ++p) {
        db.READIN(MOTION, ADD(section, NODE_WORD(h, entry, p)), w[static_cast<std::size_t>(p - 1)], error);
      }
      if (error) return;
      if (parameter >= 1 && parameter <= 3) value = w[static_cast<std::size_t>(parameter - 1)];
      return;
    }
    case 'B':
      return STEP_RECORD_WORD(db, step, 5, ADD(header::FE(h, step), -3), value, error);
    default:
      return;  // not a kind letter: nothing
  }
}

}  // namespace tmrdar::results
