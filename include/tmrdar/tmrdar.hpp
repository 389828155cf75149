/*
 * tmrdar: the C++ interface over the twelve exports of tmrdar.h.
 *
 *   tmrdar::JOB job("runs/riser");                 // opens runs/riser.dbm and .dbf
 *   std::printf("%d steps\n", job.DIMENSIONS().NUM_TIME_STEPS);
 *   const tmrdar::NODE_PROPERTIES top = job.NODE(1);
 *   tmrdar::REQUEST tension;
 *   tension.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
 *   tension.SUBTYPE = tmrdar::ELEMENT_FORCE::SECTION_1;
 *   tension.ELEMENT = 12;
 *   tension.POSITION = tmrdar::POSITION::MIDDLE;
 *   const std::vector<float> history = job.HISTORY(tension);  // one value a step
 *                                                              // job closes here
 *
 * Every failure, a negative result code of an export or the error mask of a
 * request, becomes a tmrdar::FAILURE whose message says in words what was
 * wrong, and whose CODE() is the export's own result.
 *
 * The library holds one job at a time in the process, so one JOB may be open
 * at a time: opening a second while the first is open throws. A JOB closes
 * its job when it goes out of scope; it can be moved, not copied. Calls of
 * one JOB from several threads are serialised by the library.
 *
 * Header only; C++17 or later (the std::span overloads need C++20).
 */
#ifndef TMRDAR_TMRDAR_HPP
#define TMRDAR_TMRDAR_HPP

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#if __has_include(<version>)
#include <version>
#endif
#if defined(__cpp_lib_span) && __cpp_lib_span >= 202002L
#include <span>
#define TMRDAR_HPP_HAS_SPAN 1
#endif

#include "tmrdar/tmrdar.h"

namespace tmrdar {

/* ----- Output types and subtypes of GetRequestedSingleValue and GetRequestedHistory ----- */

namespace OUTPUT_TYPE {
inline constexpr int32_t TIME = 1;                      // time of the step
inline constexpr int32_t STEP_WORD_3 = 2;               // third word of the step record
inline constexpr int32_t SURFACE_ELEVATION = 3;         // water surface elevation
inline constexpr int32_t STEP_WORD_5 = 4;               // fifth word of the step record
inline constexpr int32_t DISPLACEMENT = 5;              // of a node; subtypes in NODAL
inline constexpr int32_t VELOCITY = 6;                  // of a node; subtypes in NODAL
inline constexpr int32_t ACCELERATION = 7;              // of a node; subtypes in NODAL
inline constexpr int32_t GUIDE_SURFACE = 8;             // word 1 to 9 of a guide surface entry
inline constexpr int32_t ZERO_GAP_GUIDE = 9;            // word 1 to 6 of a zero gap guide entry
inline constexpr int32_t NODE_CONTACT = 10;             // word 1 to 7 of a node's contact entry
inline constexpr int32_t CLASHING = 11;                 // of a clash pair; subtypes in CLASHING
inline constexpr int32_t AUX_NODE = 12;                 // word 1 to 3 of an auxiliary node
inline constexpr int32_t REACTION = 13;                 // at a node with a boundary condition; subtypes in NODAL
inline constexpr int32_t GUIDE_SURFACE_REACTION = 14;   // subtypes in CONTACT_REACTION
inline constexpr int32_t ZERO_GAP_GUIDE_REACTION = 15;  // subtypes in CONTACT_REACTION
inline constexpr int32_t PIPE_IN_PIPE_REACTION = 16;    // subtypes in CONTACT_REACTION
inline constexpr int32_t ELEMENT_FORCE = 17;            // at a position of an element; subtypes in ELEMENT_FORCE
inline constexpr int32_t ELEMENT_PRESSURE = 18;         // at a position of an element; subtypes in PRESSURE
}  // namespace OUTPUT_TYPE

// Subtypes of DISPLACEMENT, VELOCITY, ACCELERATION and REACTION: the six
// stored components of a node entry, and the resultant of components 4 to 6.
namespace NODAL {
inline constexpr int32_t COMPONENT_1 = 1;
inline constexpr int32_t COMPONENT_2 = 2;
inline constexpr int32_t COMPONENT_3 = 3;
inline constexpr int32_t COMPONENT_4 = 4;
inline constexpr int32_t COMPONENT_5 = 5;
inline constexpr int32_t COMPONENT_6 = 6;
inline constexpr int32_t RESULTANT_4_TO_6 = 7;
}  // namespace NODAL

// Subtypes of GUIDE_SURFACE_REACTION, ZERO_GAP_GUIDE_REACTION and
// PIPE_IN_PIPE_REACTION: the three stored components and their magnitude.
namespace CONTACT_REACTION {
inline constexpr int32_t COMPONENT_1 = 1;
inline constexpr int32_t COMPONENT_2 = 2;
inline constexpr int32_t COMPONENT_3 = 3;
inline constexpr int32_t MAGNITUDE = 4;
}  // namespace CONTACT_REACTION

// Subtypes of CLASHING: the pair's word of the motion database, and the two
// words of the pair's clashing force in the force database.
namespace CLASHING {
inline constexpr int32_t MOTION_WORD = 1;
inline constexpr int32_t FORCE_WORD_1 = 2;
inline constexpr int32_t FORCE_WORD_2 = 3;
}  // namespace CLASHING

// Subtypes of ELEMENT_FORCE: the ten element sections of the force database,
// two resultants of two sections each, and the element temperature.
namespace ELEMENT_FORCE {
inline constexpr int32_t SECTION_1 = 1;
inline constexpr int32_t SECTION_2 = 2;
inline constexpr int32_t SECTION_3 = 3;
inline constexpr int32_t SECTION_4 = 4;
inline constexpr int32_t SECTION_5 = 5;
inline constexpr int32_t SECTION_6 = 6;
inline constexpr int32_t SECTION_7 = 7;
inline constexpr int32_t RESULTANT_5_6 = 8;  // square root of the sum of squares of sections 5 and 6
inline constexpr int32_t RESULTANT_8_9 = 9;  // the same of sections 8 and 9
inline constexpr int32_t UNUSED_10 = 10;     // accepted, and always 0
inline constexpr int32_t SECTION_8 = 11;
inline constexpr int32_t SECTION_9 = 12;
inline constexpr int32_t SECTION_10 = 13;
inline constexpr int32_t TEMPERATURE = 14;
}  // namespace ELEMENT_FORCE

// Subtypes of ELEMENT_PRESSURE: the two pressures stored at each position.
namespace PRESSURE {
inline constexpr int32_t FIRST = 1;
inline constexpr int32_t SECOND = 2;
}  // namespace PRESSURE

// Positions on an element, of ELEMENT_FORCE and ELEMENT_PRESSURE and of the
// distance along the riser.
namespace POSITION {
inline constexpr int32_t START = 1;
inline constexpr int32_t MIDDLE = 2;
inline constexpr int32_t END = 3;
}  // namespace POSITION

// Kinds of nodes and elements.
namespace KIND {
inline constexpr int32_t STRUCTURE = 0;
inline constexpr int32_t AUXILIARY = 1;
}  // namespace KIND

// What names the item of an output type's request.
enum class ITEM {
  NONE,            // the step alone
  NODE,            // a node number
  BOUNDARY_NODE,   // a node number of a node with a boundary condition
  GUIDE_SURFACE,   // a guide surface entry, from 1
  ZERO_GAP_GUIDE,  // a zero gap guide entry, from 1
  CLASH_PAIR,      // a clash pair entry, from 1
  AUX_NODE,        // an auxiliary node number
  PIP_CONNECTION,  // a pipe-in-pipe connection entry, from 1
  ELEMENT          // an element number and a position on it
};

// Which database file an output type reads.
enum class NEEDS { NOTHING, MOTION, FORCE, MOTION_OR_FORCE_BY_SUBTYPE };

struct OUTPUT_TYPE_INFO {
  int32_t TYPE;
  const char* NAME;     // a short name: lower case words joined by '-'
  const char* MEANING;  // in a few words, for people
  int32_t MAX_SUBTYPE;  // subtypes 1 to this; 0 when the subtype is not looked at
  ITEM ITEM_KIND;
  NEEDS FILE;
};

// The output types 1 to 18, in order.
inline const std::array<OUTPUT_TYPE_INFO, 18>& OUTPUT_TYPES() {
  static const std::array<OUTPUT_TYPE_INFO, 18> types{{
      {1, "time", "time of the step", 0, ITEM::NONE, NEEDS::NOTHING},
      {2, "step-word-3", "third word of the step record", 0, ITEM::NONE, NEEDS::NOTHING},
      {3, "surface-elevation", "water surface elevation", 0, ITEM::NONE, NEEDS::NOTHING},
      {4, "step-word-5", "fifth word of the step record", 0, ITEM::NONE, NEEDS::NOTHING},
      {5, "displacement", "nodal displacement", 7, ITEM::NODE, NEEDS::MOTION},
      {6, "velocity", "nodal velocity", 7, ITEM::NODE, NEEDS::MOTION},
      {7, "acceleration", "nodal acceleration", 7, ITEM::NODE, NEEDS::MOTION},
      {8, "guide-surface", "guide surface result", 9, ITEM::GUIDE_SURFACE, NEEDS::MOTION},
      {9, "zero-gap-guide", "zero gap guide result", 6, ITEM::ZERO_GAP_GUIDE, NEEDS::MOTION},
      {10, "node-contact", "node contact result", 7, ITEM::NODE, NEEDS::MOTION},
      {11, "clashing", "clashing result", 3, ITEM::CLASH_PAIR, NEEDS::MOTION_OR_FORCE_BY_SUBTYPE},
      {12, "aux-node", "auxiliary node result", 3, ITEM::AUX_NODE, NEEDS::MOTION},
      {13, "reaction", "reaction at a boundary condition", 7, ITEM::BOUNDARY_NODE, NEEDS::FORCE},
      {14, "guide-surface-reaction", "guide surface reaction", 4, ITEM::GUIDE_SURFACE, NEEDS::FORCE},
      {15, "zero-gap-guide-reaction", "zero gap guide reaction", 4, ITEM::ZERO_GAP_GUIDE, NEEDS::FORCE},
      {16, "pipe-in-pipe-reaction", "pipe-in-pipe reaction", 4, ITEM::PIP_CONNECTION, NEEDS::FORCE},
      {17, "element-force", "element force result", 14, ITEM::ELEMENT, NEEDS::FORCE},
      {18, "element-pressure", "element pressure", 2, ITEM::ELEMENT, NEEDS::FORCE},
  }};
  return types;
}

// The description of an output type, or nullptr outside 1 to 18.
inline const OUTPUT_TYPE_INFO* DESCRIBE_OUTPUT_TYPE(int32_t type) {
  if (type < 1 || type > 18) return nullptr;
  return &OUTPUT_TYPES()[static_cast<std::size_t>(type - 1)];
}

// The format a database version code names ("V861" for 13), or nullptr.
inline const char* FORMAT_NAME(int32_t code) {
  switch (code) {
    case 13:
      return "V861";
    case 11:
      return "V841";
    case 10:
      return "V831";
    case 7:
      return "V821";
    case 4:
      return "V815";
    case 3:
      return "V811";
    default:
      return nullptr;
  }
}

/* ----- What a job answers ----- */

// A failure of an export, told in words. CODE() is the export's result: a
// negative code, or the error mask of a request. A step or count outside the
// job, which the interface refuses before asking, has the mask value 256 that
// the library gives it; a second open and a call of a closed job have 0.
class FAILURE : public std::runtime_error {
 public:
  FAILURE(const std::string& message, int32_t code) : std::runtime_error(message), code_(code) {}
  int32_t CODE() const noexcept { return code_; }

 private:
  int32_t code_;
};

// The two files of a job as GetDatabaseInfo found them.
struct VERSION_CODES {
  int32_t MOTION = 0;                     // version code of the .dbm file; 0 missing, -1 unreadable
  int32_t FORCE = 0;                      // the same of the .dbf file
  std::array<int32_t, 5> MOTION_WORDS{};  // words 4 to 8 of each file's first record
  std::array<int32_t, 5> FORCE_WORDS{};
};

// The 14 model dimensions, in the order that GetDatabaseInfo gives them.
struct MODEL_DIMENSIONS {
  int32_t NUM_TIME_STEPS = 0;
  int32_t PIP_NODES_PER_PAIR = 0;
  int32_t NUM_ELEMENTS = 0;
  int32_t NUM_NODES = 0;
  int32_t NUM_AUX_ELEMENTS = 0;
  int32_t NUM_AUX_NODES = 0;
  int32_t NUM_LABELS = 0;
  int32_t NUM_BOUNDARY_CONDITIONS = 0;
  int32_t NUM_GUIDE_SURFACES = 0;
  int32_t NUM_ZERO_GAP_GUIDES = 0;
  int32_t NUM_PIPE_IN_PIPE = 0;
  int32_t NUM_PIP_CONNECTIONS = 0;  // entries of the pipe-in-pipe reactions
  int32_t NUM_CLASH_PAIRS = 0;
  int32_t NUM_NONLINEAR_E_TABLES = 0;  // rows of the stress-strain table

  std::array<int32_t, 14> AS_ARRAY() const {
    return {NUM_TIME_STEPS,     PIP_NODES_PER_PAIR,    NUM_ELEMENTS,     NUM_NODES,
            NUM_AUX_ELEMENTS,   NUM_AUX_NODES,         NUM_LABELS,       NUM_BOUNDARY_CONDITIONS,
            NUM_GUIDE_SURFACES, NUM_ZERO_GAP_GUIDES,   NUM_PIPE_IN_PIPE, NUM_PIP_CONNECTIONS,
            NUM_CLASH_PAIRS,    NUM_NONLINEAR_E_TABLES};
  }
};

struct ANALYSIS_DETAILS {
  int32_t DETAIL_1 = 0;
  int32_t DETAIL_2 = 0;
  float DETAIL_3 = 0.0F;
  std::string TITLE;  // without trailing blanks
};

struct NODE_PROPERTIES {
  int32_t NUMBER = 0;
  int32_t KIND = KIND::STRUCTURE;
  int32_t ROW = 0;  // the node's row in its table, from 1
  std::array<float, 3> COORDINATES{};
};

// An element's properties. An auxiliary element has ROW, NODES and A8 (word 8
// of its first record); its other fields keep the marks -1 and -1.0.
struct ELEMENT_PROPERTIES {
  int32_t NUMBER = 0;
  int32_t KIND = KIND::STRUCTURE;
  int32_t ROW = 0;                       // the element's row, from 1
  std::array<int32_t, 2> NODES{-1, -1};  // numbers of its end nodes; -1 for an end that names no node
  int32_t A8 = -1;                       // word 8 of its first record
  int32_t B5 = -1;                       // word 5 of its second record
  int32_t SECTION_2 = -1;                // words 2 and 4 of its section record, to the nearest integer
  int32_t SECTION_4 = -1;
  float LENGTH = -1.0F;
  std::array<float, 3> EXTERNAL_FLUID{-1.0F, -1.0F, -1.0F};
  std::array<float, 4> B1_TO_B4{-1.0F, -1.0F, -1.0F, -1.0F};  // words 1 to 4 of its second record
  float SECTION_3 = -1.0F;                                    // word 3 of its section record
  float A6 = -1.0F;                                           // words 6 and 7 of its first record
  float A7 = -1.0F;
  std::array<float, 3> B6_TO_B8{-1.0F, -1.0F, -1.0F};  // words 6 to 8 of its second record
  float C1 = -1.0F;                                    // word 1 of its third record
};

// One point of a stress-strain curve: its two values in stored order.
struct CURVE_POINT {
  float FIRST = 0.0F;
  float SECOND = 0.0F;
};

// A request for a value or a history. The item is named by NODE (a node
// number, or the entry of a guide, clash pair or pipe-in-pipe connection) or
// by ELEMENT and POSITION, as the output type's ITEM_KIND says; or, with NODE
// and ELEMENT both below 1, by LABEL.
struct REQUEST {
  int32_t OUTPUT_TYPE = OUTPUT_TYPE::TIME;
  int32_t SUBTYPE = 1;
  int32_t NODE = 0;
  int32_t ELEMENT = 0;
  int32_t POSITION = POSITION::START;
  std::string LABEL;
};

// Node and element lists, found number by number (see JOB::LIST_NODES).
struct NODE_LIST {
  std::vector<NODE_PROPERTIES> NODES;  // in row order
  int32_t UNLISTED_ROWS = 0;           // rows whose number was not among those asked
};
struct ELEMENT_LIST {
  std::vector<ELEMENT_PROPERTIES> ELEMENTS;  // in row order
  int32_t UNLISTED_ROWS = 0;
};

// The statistics of a history over steps FIRST_STEP to LAST_STEP: its
// extremes as stored, with the step of each (the first step when the
// extreme repeats), and its mean and standard deviation (of the whole
// population, dividing by the number of steps), summed in double precision.
struct HISTORY_STATISTICS {
  int32_t FIRST_STEP = 0;
  int32_t LAST_STEP = 0;
  float MINIMUM = 0.0F;
  int32_t MINIMUM_STEP = 0;
  float MAXIMUM = 0.0F;
  int32_t MAXIMUM_STEP = 0;
  double MEAN = 0.0;
  double STANDARD_DEVIATION = 0.0;
};

// A place along the riser that a result belongs to: a node (ELEMENT 0), or a
// position of an element (NODE 0), with its distance along the riser.
struct RISER_POINT {
  int32_t NODE = 0;
  int32_t ELEMENT = 0;
  int32_t POSITION = 0;
  float DISTANCE = 0.0F;
};

// One result at one step at a point along the riser.
struct SNAPSHOT_POINT {
  RISER_POINT POINT;
  float VALUE = 0.0F;
};

// The statistics of one result's history at a point along the riser.
struct RANGE_POINT {
  RISER_POINT POINT;
  HISTORY_STATISTICS STATISTICS;
};

// The statistics of `count` values, the first of which is that of step
// `first_step`. A count of 0 gives the statistics of nothing: all zero.
inline HISTORY_STATISTICS STATISTICS_OF(const float* values, std::size_t count, int32_t first_step = 1) {
  HISTORY_STATISTICS stats;
  stats.FIRST_STEP = first_step;
  stats.LAST_STEP = first_step + static_cast<int32_t>(count) - 1;
  if (count == 0) return stats;
  std::size_t lowest = 0;
  std::size_t highest = 0;
  double sum = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    if (values[i] < values[lowest]) lowest = i;
    if (values[i] > values[highest]) highest = i;
    sum += static_cast<double>(values[i]);
  }
  const double mean = sum / static_cast<double>(count);
  // A second pass about the mean keeps the deviation free of cancellation.
  double squares = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    const double deviation = static_cast<double>(values[i]) - mean;
    squares += deviation * deviation;
  }
  stats.MINIMUM = values[lowest];
  stats.MINIMUM_STEP = first_step + static_cast<int32_t>(lowest);
  stats.MAXIMUM = values[highest];
  stats.MAXIMUM_STEP = first_step + static_cast<int32_t>(highest);
  stats.MEAN = mean;
  stats.STANDARD_DEVIATION = std::sqrt(squares / static_cast<double>(count));
  return stats;
}

namespace detail {

inline std::string QUOTED(const std::string& text) { return "\"" + text + "\""; }

inline std::string JOINED(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : "; ") + part;
  return text;
}

inline std::string TYPE_NAME(int32_t type) {
  const OUTPUT_TYPE_INFO* info = DESCRIBE_OUTPUT_TYPE(type);
  return "output type " + std::to_string(type) + (info != nullptr ? std::string(" (") + info->NAME + ")" : "");
}

inline std::string FILE_STATE(const char* which, int32_t code) {
  std::string text = std::string("the ") + which + " database";
  if (code == 0) return text + " does not exist";
  if (code < 0) return text + " cannot be read";
  const char* name = FORMAT_NAME(code);
  return text + " has version code " + std::to_string(code) +
         (name != nullptr ? std::string(" (") + name + ")" : std::string(", a format this library does not read"));
}

inline std::string CANNOT_OPEN(const std::string& path, const VERSION_CODES& codes, int32_t result) {
  if (result == -1) return "the job path is blank";
  if (codes.MOTION == 0 && codes.FORCE == 0) {
    return "no database files found for " + path + " (looked for .dbm and .dbf)";
  }
  std::string reason;
  if (codes.MOTION > 0 && codes.FORCE > 0 && codes.MOTION != codes.FORCE) {
    reason = "the motion database (version code " + std::to_string(codes.MOTION) +
             ") and the force database (version code " + std::to_string(codes.FORCE) + ") are of different formats";
  } else {
    reason = FILE_STATE("motion", codes.MOTION) + ", and " + FILE_STATE("force", codes.FORCE);
  }
  return "no usable database in " + path + ": " + reason;
}

// Numbers of a lookup found wanting, in words.
inline std::string ITEM_WORDS(ITEM item, int32_t number) {
  switch (item) {
    case ITEM::GUIDE_SURFACE:
      return "guide surface " + std::to_string(number);
    case ITEM::ZERO_GAP_GUIDE:
      return "zero gap guide " + std::to_string(number);
    case ITEM::CLASH_PAIR:
      return "clash pair " + std::to_string(number);
    case ITEM::AUX_NODE:
      return "auxiliary node " + std::to_string(number);
    case ITEM::PIP_CONNECTION:
      return "pipe-in-pipe connection " + std::to_string(number);
    case ITEM::ELEMENT:
      return number < 0 ? "auxiliary element " + std::to_string(-static_cast<int64_t>(number))
                        : "element " + std::to_string(number);
    default:
      return "node " + std::to_string(number);
  }
}

// What the frames lack when a request gets the mask value 2048.
inline std::string NOT_WRITTEN(int32_t type, int32_t subtype) {
  switch (type) {
    case OUTPUT_TYPE::DISPLACEMENT:
      return "the motion database holds no nodal displacements";
    case OUTPUT_TYPE::VELOCITY:
      return "the motion database holds no nodal velocities";
    case OUTPUT_TYPE::ACCELERATION:
      return "the motion database holds no nodal accelerations";
    case OUTPUT_TYPE::ELEMENT_PRESSURE:
      return "the force database holds no element pressures";
    case OUTPUT_TYPE::ELEMENT_FORCE:
      switch (subtype) {
        case ELEMENT_FORCE::RESULTANT_5_6:
          return "the force database lacks element section 5 or 6";
        case ELEMENT_FORCE::RESULTANT_8_9:
          return "the force database lacks element section 8 or 9";
        case ELEMENT_FORCE::UNUSED_10:
          return "the force database lacks element section 2 or 3";
        case ELEMENT_FORCE::TEMPERATURE:
          return "the force database holds no element temperatures";
        default: {
          const int32_t section = subtype <= 7 ? subtype : subtype - 3;
          return "the force database holds no element section " + std::to_string(section);
        }
      }
    default:
      return "the force database holds no reactions or contact forces";
  }
}

}  // namespace detail

/* ----- The job ----- */

class JOB {
 public:
  // Opens the job at `path`: any extension, or none, selects <stem>.dbm and
  // <stem>.dbf. Throws FAILURE when no usable database is there, or when
  // another JOB is open.
  explicit JOB(const std::string& path) : path_(path) {
    bool expected = false;
    if (!IS_OPEN_FLAG().compare_exchange_strong(expected, true)) {
      throw FAILURE("another job is open: the library holds one job at a time", 0);
    }
    std::array<int32_t, 14> dims{};
    const int32_t n = 14;
    const int32_t result =
        ::GetDatabaseInfo(&codes_.MOTION, &codes_.FORCE, codes_.MOTION_WORDS.data(), codes_.FORCE_WORDS.data(), &n,
                          dims.data(), path.data(), static_cast<int64_t>(path.size()));
    if (result != 0) {
      ::XIT();
      IS_OPEN_FLAG().store(false);
      throw FAILURE(detail::CANNOT_OPEN(path, codes_, result), result);
    }
    owner_ = true;
    frames_room_ = FRAMES_ROOM(path, codes_);
    int32_t* fields[14] = {&dims_.NUM_TIME_STEPS,      &dims_.PIP_NODES_PER_PAIR,      &dims_.NUM_ELEMENTS,
                           &dims_.NUM_NODES,           &dims_.NUM_AUX_ELEMENTS,        &dims_.NUM_AUX_NODES,
                           &dims_.NUM_LABELS,          &dims_.NUM_BOUNDARY_CONDITIONS, &dims_.NUM_GUIDE_SURFACES,
                           &dims_.NUM_ZERO_GAP_GUIDES, &dims_.NUM_PIPE_IN_PIPE,        &dims_.NUM_PIP_CONNECTIONS,
                           &dims_.NUM_CLASH_PAIRS,     &dims_.NUM_NONLINEAR_E_TABLES};
    for (std::size_t i = 0; i < dims.size(); ++i) *fields[i] = dims[i];
  }

  ~JOB() {
    if (owner_) {
      ::XIT();
      IS_OPEN_FLAG().store(false);
    }
  }

  JOB(const JOB&) = delete;
  JOB& operator=(const JOB&) = delete;
  JOB(JOB&& other) noexcept
      : path_(std::move(other.path_)),
        codes_(other.codes_),
        dims_(other.dims_),
        frames_room_(other.frames_room_),
        owner_(other.owner_) {
    other.owner_ = false;
  }
  JOB& operator=(JOB&& other) noexcept {
    if (this != &other) {
      if (owner_) {
        ::XIT();
        IS_OPEN_FLAG().store(false);
      }
      path_ = std::move(other.path_);
      codes_ = other.codes_;
      dims_ = other.dims_;
      frames_room_ = other.frames_room_;
      owner_ = other.owner_;
      other.owner_ = false;
    }
    return *this;
  }

  // Closes the job now. Throws FAILURE when closing a file failed; the job
  // counts as closed all the same.
  void CLOSE() {
    if (!owner_) return;
    owner_ = false;
    const int32_t result = ::XIT();
    IS_OPEN_FLAG().store(false);
    if (result != 0) {
      const char* which = result == 1 ? "the motion database" : result == 2 ? "the force database" : "both databases";
      throw FAILURE(std::string("closing ") + which + " failed", result);
    }
  }

  bool IS_OPEN() const noexcept { return owner_; }
  const std::string& PATH() const noexcept { return path_; }
  const VERSION_CODES& CODES() const noexcept { return codes_; }
  const MODEL_DIMENSIONS& DIMENSIONS() const noexcept { return dims_; }

  ANALYSIS_DETAILS DETAILS() const {
    CHECK_OPEN();
    ANALYSIS_DETAILS details;
    std::string title(1024, ' ');
    const int32_t result = ::GetAnalysisDetails(&details.DETAIL_1, &details.DETAIL_2, &details.DETAIL_3, &title[0],
                                                static_cast<int64_t>(title.size()));
    if (result == 0) {
      title.erase(title.find_last_not_of(' ') + 1);
      details.TITLE = title;
    }
    return details;
  }

  // The coordinates of a node. Throws FAILURE when there is no such node.
  NODE_PROPERTIES NODE(int32_t number, int32_t kind = KIND::STRUCTURE) const {
    CHECK_OPEN();
    NODE_PROPERTIES node;
    node.NUMBER = number;
    node.KIND = kind;
    const int32_t result =
        ::GetNodeProperties(&codes_.MOTION, &codes_.FORCE, &number, &kind, node.COORDINATES.data());
    if (result > 0) {
      node.ROW = result;
      return node;
    }
    if (result == -2) throw FAILURE("node kind " + std::to_string(kind) + " is neither 0 nor 1", result);
    if (result == -1) throw FAILURE(NO_FORMAT(), result);
    throw FAILURE(
        (kind == KIND::AUXILIARY ? "auxiliary node " : "node ") + std::to_string(number) + " is not in the database",
        result);
  }
  // Whether a node with that number is in the database.
  bool HAS_NODE(int32_t number, int32_t kind = KIND::STRUCTURE) const {
    CHECK_OPEN();
    std::array<float, 3> xyz{};
    return ::GetNodeProperties(&codes_.MOTION, &codes_.FORCE, &number, &kind, xyz.data()) > 0;
  }

  // The properties of an element. With kind STRUCTURE a negative number names
  // the auxiliary element of that number made positive. Throws FAILURE when
  // there is no such element.
  ELEMENT_PROPERTIES ELEMENT(int32_t number, int32_t kind = KIND::STRUCTURE) const {
    CHECK_OPEN();
    std::array<int32_t, 15> ints{};
    std::array<float, 15> reals{};
    const int32_t length = 15;
    const int32_t result =
        ::GetElementProperties(&codes_.MOTION, &codes_.FORCE, &number, &kind, &length, ints.data(), reals.data());
    if (result == -3) throw FAILURE("element kind " + std::to_string(kind) + " is neither 0 nor 1", result);
    if (result == -2) throw FAILURE(NO_FORMAT(), result);
    if (result == -1) {
      const bool auxiliary = kind == KIND::AUXILIARY || number < 0;
      const int64_t shown = kind == KIND::STRUCTURE && number < 0 ? -static_cast<int64_t>(number) : number;
      throw FAILURE(
          (auxiliary ? "auxiliary element " : "element ") + std::to_string(shown) + " is not in the database",
          result);
    }
    if (result != 0) throw FAILURE("the element properties need " + std::to_string(result) + " slots", result);
    ELEMENT_PROPERTIES element;
    element.NUMBER = number;
    element.KIND = kind;
    if (kind == KIND::STRUCTURE && number < 0) {
      // The answer is the auxiliary element's, whose number is this one made positive.
      element.KIND = KIND::AUXILIARY;
      element.NUMBER = number > INT32_MIN ? -number : number;
    }
    element.ROW = ints[0];
    element.NODES = {ints[1], ints[2]};
    element.A8 = ints[3];
    if (element.KIND == KIND::AUXILIARY) return element;
    element.B5 = ints[4];
    element.SECTION_2 = ints[5];
    element.SECTION_4 = ints[6];
    element.LENGTH = reals[0];
    element.EXTERNAL_FLUID = {reals[1], reals[2], reals[3]};
    element.B1_TO_B4 = {reals[4], reals[5], reals[6], reals[7]};
    element.SECTION_3 = reals[8];
    element.A6 = reals[9];
    element.A7 = reals[10];
    element.B6_TO_B8 = {reals[11], reals[12], reals[13]};
    element.C1 = reals[14];
    return element;
  }
  bool HAS_ELEMENT(int32_t number, int32_t kind = KIND::STRUCTURE) const {
    CHECK_OPEN();
    std::array<int32_t, 15> ints{};
    std::array<float, 15> reals{};
    const int32_t length = 15;
    return ::GetElementProperties(&codes_.MOTION, &codes_.FORCE, &number, &kind, &length, ints.data(),
                                  reals.data()) == 0;
  }

  // How far along the riser the start, middle or end (POSITION) of an element
  // of the structure lies, the element rows laid end to end in row order.
  float DISTANCE(int32_t element, int32_t position = POSITION::START) const {
    CHECK_OPEN();
    float distance = 0.0F;
    const int32_t result = ::GetDistanceAlongRiser(&codes_.MOTION, &codes_.FORCE, &element, &position, &distance);
    if (result == 0) return distance;
    if (result == -2) {
      throw FAILURE(
          "position " + std::to_string(position) + " is not 1, 2 or 3 (start, middle or end of the element)", result);
    }
    if (result == -3) throw FAILURE(NO_FORMAT(), result);
    if (element < 1) {
      throw FAILURE("element " + std::to_string(element) +
                        " has no place along the riser: only elements of the structure, numbered from 1, have one",
                    result);
    }
    throw FAILURE("element " + std::to_string(element) + " is not in the database", result);
  }

  // The points of stress-strain curve `id`, in stored order. Throws FAILURE
  // when the curve is not in the database; a curve whose stored count is
  // negative gives no points.
  std::vector<CURVE_POINT> CURVE(int32_t id) const {
    CHECK_OPEN();
    const int32_t none = 0;
    const int32_t count = ::GetProcessedDirectStressStrainData(&codes_.MOTION, &codes_.FORCE, &id, &none, nullptr);
    if (count < 0 || (count == 0 && id == 0)) {
      throw FAILURE("stress-strain curve " + std::to_string(id) + " is not in the database", count);
    }
    std::vector<CURVE_POINT> points;
    if (count == 0) return points;
    // A curve cannot hold more points than the table has rows.
    if (count > dims_.NUM_NONLINEAR_E_TABLES) {
      throw FAILURE("stress-strain curve " + std::to_string(id) + " claims " + std::to_string(count) +
                        " points, but the table has only " + std::to_string(dims_.NUM_NONLINEAR_E_TABLES) + " rows",
                    count);
    }
    std::vector<float> pairs(2 * static_cast<std::size_t>(count), 0.0F);
    const int32_t result =
        ::GetProcessedDirectStressStrainData(&codes_.MOTION, &codes_.FORCE, &id, &count, pairs.data());
    if (result != 0) {
      throw FAILURE("stress-strain curve " + std::to_string(id) + " could not be read whole", result);
    }
    points.resize(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = {pairs[2 * i], pairs[2 * i + 1]};
    return points;
  }

  // One result at time step `step` (1 to NUM_TIME_STEPS). When `resolved` is
  // given, it receives the request with the node, element and position that a
  // label named.
  float VALUE(const REQUEST& request, int32_t step, REQUEST* resolved = nullptr) const {
    CHECK_OPEN();
    if (step < 1 || step > dims_.NUM_TIME_STEPS) {
      throw FAILURE(BAD_STEP(step), REQUEST_STEP_BAD);
    }
    REQUEST asked = request;
    float value = 0.0F;
    const int32_t mask =
        ::GetRequestedSingleValue(&codes_.MOTION, &codes_.FORCE, &asked.OUTPUT_TYPE, &asked.SUBTYPE, &asked.NODE,
                                  &asked.ELEMENT, &asked.POSITION, &dims_.NUM_TIME_STEPS, &step, &value,
                                  asked.LABEL.data(), static_cast<int64_t>(asked.LABEL.size()));
    if (resolved != nullptr) *resolved = asked;
    if (mask > 0) throw FAILURE(REQUEST_FAILURE(request, asked, mask, step, false), mask);
    return value;
  }

  // The result at steps 1 to values' length into the caller's array. After a
  // failure part of the way, the values before the failed step are good.
  void HISTORY(const REQUEST& request, float* values, std::size_t count, REQUEST* resolved = nullptr) const {
    CHECK_OPEN();
    if (count > static_cast<std::size_t>(dims_.NUM_TIME_STEPS > 0 ? dims_.NUM_TIME_STEPS : 0)) {
      throw FAILURE(BAD_COUNT(static_cast<int64_t>(count)), REQUEST_STEP_BAD);
    }
    REQUEST asked = request;
    const auto n = static_cast<int32_t>(count);
    const int32_t mask =
        ::GetRequestedHistory(&codes_.MOTION, &codes_.FORCE, &asked.OUTPUT_TYPE, &asked.SUBTYPE, &asked.NODE,
                              &asked.ELEMENT, &asked.POSITION, &dims_.NUM_TIME_STEPS, &n, values, asked.LABEL.data(),
                              static_cast<int64_t>(asked.LABEL.size()));
    if (resolved != nullptr) *resolved = asked;
    if (mask > 0) throw FAILURE(REQUEST_FAILURE(request, asked, mask, n, true), mask);
  }
#ifdef TMRDAR_HPP_HAS_SPAN
  void HISTORY(const REQUEST& request, std::span<float> values, REQUEST* resolved = nullptr) const {
    HISTORY(request, values.data(), values.size(), resolved);
  }
#endif
  // The result at steps 1 to `count`.
  std::vector<float> HISTORY(const REQUEST& request, int32_t count, REQUEST* resolved = nullptr) const {
    CHECK_OPEN();
    if (count < 0 || count > dims_.NUM_TIME_STEPS) {
      throw FAILURE(BAD_COUNT(count), REQUEST_STEP_BAD);
    }
    if (frames_room_ >= 0 && count > frames_room_) {
      throw FAILURE("a history of " + std::to_string(count) + " steps cannot be read: the job's files have room " +
                        "for no more than " + std::to_string(frames_room_) + " frames, though its header counts " +
                        std::to_string(dims_.NUM_TIME_STEPS) + " steps",
                    REQUEST_STEP_BAD);
    }
    std::vector<float> values(static_cast<std::size_t>(count));
    HISTORY(request, values.data(), values.size(), resolved);
    return values;
  }
  // The result at every step of the job.
  std::vector<float> HISTORY(const REQUEST& request) const { return HISTORY(request, dims_.NUM_TIME_STEPS); }

  // The time of every step.
  std::vector<float> TIMES() const {
    REQUEST time;
    time.OUTPUT_TYPE = OUTPUT_TYPE::TIME;
    return HISTORY(time);
  }

  // The result at steps `first` to `last`, 1 <= first <= last <=
  // NUM_TIME_STEPS. The library reads a history from step 1, so steps 1 to
  // `last` are read and those before `first` dropped.
  std::vector<float> HISTORY_STEPS(const REQUEST& request, int32_t first, int32_t last,
                                   REQUEST* resolved = nullptr) const {
    CHECK_STEPS(first, last);
    std::vector<float> values = HISTORY(request, last, resolved);
    values.erase(values.begin(), values.begin() + (first - 1));
    return values;
  }

  // The statistics of one result over steps `first` to `last`.
  HISTORY_STATISTICS STATISTICS(const REQUEST& request, int32_t first, int32_t last,
                                REQUEST* resolved = nullptr) const {
    CHECK_STEPS(first, last);
    const std::vector<float> values = HISTORY(request, last, resolved);
    return STATISTICS_OF(values.data() + (first - 1), static_cast<std::size_t>(last - first + 1), first);
  }
  // The statistics of one result over the whole run.
  HISTORY_STATISTICS STATISTICS(const REQUEST& request) const {
    return STATISTICS(request, 1, dims_.NUM_TIME_STEPS);
  }

  // The places along the riser that results of `output_type` belong to, in
  // the elements' row order: for a result of an element, its start, middle
  // and end; for a result of a node, each node that an element's end names,
  // the first time it is named. Throws FAILURE for an output type of neither.
  std::vector<RISER_POINT> RISER_POINTS(int32_t output_type) const {
    CHECK_OPEN();
    const OUTPUT_TYPE_INFO* info = DESCRIBE_OUTPUT_TYPE(output_type);
    if (info == nullptr || (info->ITEM_KIND != ITEM::NODE && info->ITEM_KIND != ITEM::ELEMENT)) {
      throw FAILURE(detail::TYPE_NAME(output_type) +
                        " has no place along the riser: only results of a node or an element have one",
                    0);
    }
    std::vector<RISER_POINT> points;
    std::map<int32_t, bool> named;
    for (const ELEMENT_PROPERTIES& element : LIST_ELEMENTS(KIND::STRUCTURE).ELEMENTS) {
      if (info->ITEM_KIND == ITEM::ELEMENT) {
        for (const int32_t position : {POSITION::START, POSITION::MIDDLE, POSITION::END}) {
          points.push_back({0, element.NUMBER, position, DISTANCE(element.NUMBER, position)});
        }
        continue;
      }
      for (std::size_t end = 0; end < 2; ++end) {
        const int32_t node = element.NODES[end];
        // A node numbered 0 cannot be asked for by number.
        if (node < 1 || !named.emplace(node, true).second) continue;
        points.push_back({node, 0, 0, DISTANCE(element.NUMBER, end == 0 ? POSITION::START : POSITION::END)});
      }
    }
    return points;
  }

  // Told after each point of a snapshot or range graph: points done, of all.
  using PROGRESS = std::function<void(std::size_t done, std::size_t total)>;

  // The result that `request`'s output type and subtype name, at step
  // `step`, at each of `points` (its item is not looked at).
  std::vector<SNAPSHOT_POINT> SNAPSHOT(const REQUEST& request, int32_t step, const std::vector<RISER_POINT>& points,
                                       const PROGRESS& progress = {}) const {
    std::vector<SNAPSHOT_POINT> snapshot(points.size());
    REQUEST asked = request;
    for (std::size_t i = 0; i < points.size(); ++i) {
      AT_POINT(asked, points[i]);
      snapshot[i].POINT = points[i];
      snapshot[i].VALUE = VALUE(asked, step);
      if (progress) progress(i + 1, points.size());
    }
    return snapshot;
  }
  // The same at every place along the riser (see RISER_POINTS).
  std::vector<SNAPSHOT_POINT> SNAPSHOT(const REQUEST& request, int32_t step, const PROGRESS& progress = {}) const {
    return SNAPSHOT(request, step, RISER_POINTS(request.OUTPUT_TYPE), progress);
  }

  // The range graph of the result that `request`'s output type and subtype
  // name, over steps `first` to `last`, at each of `points`: one history read
  // a point, into one buffer.
  std::vector<RANGE_POINT> RANGE_GRAPH(const REQUEST& request, int32_t first, int32_t last,
                                       const std::vector<RISER_POINT>& points, const PROGRESS& progress = {}) const {
    CHECK_STEPS(first, last);
    std::vector<float> buffer(static_cast<std::size_t>(last));
    std::vector<RANGE_POINT> graph(points.size());
    REQUEST asked = request;
    for (std::size_t i = 0; i < points.size(); ++i) {
      AT_POINT(asked, points[i]);
      HISTORY(asked, buffer.data(), buffer.size());
      graph[i].POINT = points[i];
      graph[i].STATISTICS =
          STATISTICS_OF(buffer.data() + (first - 1), static_cast<std::size_t>(last - first + 1), first);
      if (progress) progress(i + 1, points.size());
    }
    return graph;
  }
  // The same at every place along the riser (see RISER_POINTS).
  std::vector<RANGE_POINT> RANGE_GRAPH(const REQUEST& request, int32_t first, int32_t last,
                                       const PROGRESS& progress = {}) const {
    CHECK_STEPS(first, last);
    return RANGE_GRAPH(request, first, last, RISER_POINTS(request.OUTPUT_TYPE), progress);
  }

  // The nodes of one kind in row order, found by asking for their numbers:
  // first the numbers that the elements' ends name (structure nodes), then
  // 0, 1, 2 ... up to `max_number`, until every row is found. A row whose
  // number lies outside, or repeats the number of an earlier row, is not
  // listed and is counted in UNLISTED_ROWS.
  NODE_LIST LIST_NODES(int32_t kind = KIND::STRUCTURE, int32_t max_number = 1000000) const {
    CHECK_OPEN();
    const int64_t rows = kind == KIND::AUXILIARY ? dims_.NUM_AUX_NODES : dims_.NUM_NODES;
    // Kept by row as found: never more than the numbers asked, whatever the
    // header's count says.
    std::map<int32_t, NODE_PROPERTIES> by_row;
    const auto ask = [&](int32_t number) {
      NODE_PROPERTIES node;
      node.NUMBER = number;
      node.KIND = kind;
      int32_t asked = number;
      int32_t k = kind;
      node.ROW = ::GetNodeProperties(&codes_.MOTION, &codes_.FORCE, &asked, &k, node.COORDINATES.data());
      if (node.ROW >= 1 && node.ROW <= rows) by_row.emplace(node.ROW, node);
    };
    if (kind == KIND::STRUCTURE) {
      for (const ELEMENT_PROPERTIES& element : LIST_ELEMENTS(KIND::STRUCTURE, max_number).ELEMENTS) {
        for (const int32_t end : element.NODES) {
          if (static_cast<int64_t>(by_row.size()) < rows && end >= 0) ask(end);
        }
      }
    }
    for (int64_t number = 0; static_cast<int64_t>(by_row.size()) < rows && number <= max_number; ++number) {
      ask(static_cast<int32_t>(number));
    }
    NODE_LIST list;
    for (const auto& row : by_row) list.NODES.push_back(row.second);
    list.UNLISTED_ROWS = static_cast<int32_t>(rows - static_cast<int64_t>(list.NODES.size()));
    return list;
  }

  // The elements of one kind in row order, found by asking for the numbers
  // 1, 2 ... up to `max_number` until every row is found; UNLISTED_ROWS as
  // for LIST_NODES.
  ELEMENT_LIST LIST_ELEMENTS(int32_t kind = KIND::STRUCTURE, int32_t max_number = 1000000) const {
    CHECK_OPEN();
    const int64_t rows = kind == KIND::AUXILIARY ? dims_.NUM_AUX_ELEMENTS : dims_.NUM_ELEMENTS;
    std::map<int32_t, ELEMENT_PROPERTIES> by_row;
    for (int64_t number = 1; static_cast<int64_t>(by_row.size()) < rows && number <= max_number; ++number) {
      if (!HAS_ELEMENT(static_cast<int32_t>(number), kind)) continue;
      const ELEMENT_PROPERTIES element = ELEMENT(static_cast<int32_t>(number), kind);
      if (element.ROW >= 1 && element.ROW <= rows) by_row.emplace(element.ROW, element);
    }
    ELEMENT_LIST list;
    for (const auto& row : by_row) list.ELEMENTS.push_back(row.second);
    list.UNLISTED_ROWS = static_cast<int32_t>(rows - static_cast<int64_t>(list.ELEMENTS.size()));
    return list;
  }

  // The mask value of a request's step or count that the job refused before
  // asking the library.
  static constexpr int32_t REQUEST_STEP_BAD = 256;

 private:
  static std::atomic<bool>& IS_OPEN_FLAG() {
    static std::atomic<bool> open{false};
    return open;
  }

  void CHECK_OPEN() const {
    if (!owner_)
      throw FAILURE(path_.empty() ? std::string("the job is not open") : "the job " + path_ + " is not open", 0);
  }

  // Steps `first` to `last` must be steps of the job, in order, that its
  // files have room for.
  void CHECK_STEPS(int32_t first, int32_t last) const {
    CHECK_OPEN();
    if (dims_.NUM_TIME_STEPS < 1) throw FAILURE("the job has no time steps", REQUEST_STEP_BAD);
    if (first < 1 || first > dims_.NUM_TIME_STEPS) throw FAILURE(BAD_STEP(first), REQUEST_STEP_BAD);
    if (last < 1 || last > dims_.NUM_TIME_STEPS) throw FAILURE(BAD_STEP(last), REQUEST_STEP_BAD);
    if (first > last) {
      throw FAILURE("the first step " + std::to_string(first) + " comes after the last step " + std::to_string(last),
                    REQUEST_STEP_BAD);
    }
    if (frames_room_ >= 0 && last > frames_room_) {
      throw FAILURE("step " + std::to_string(last) + " cannot be read: the job's files have room for no more than " +
                        std::to_string(frames_room_) + " frames, though its header counts " +
                        std::to_string(dims_.NUM_TIME_STEPS) + " steps",
                    REQUEST_STEP_BAD);
    }
  }

  // The request of the same output type and subtype at `point`.
  static void AT_POINT(REQUEST& request, const RISER_POINT& point) {
    request.LABEL.clear();
    request.NODE = point.NODE;
    request.ELEMENT = point.ELEMENT;
    request.POSITION = point.ELEMENT > 0 ? point.POSITION : POSITION::START;
  }

  static std::string NO_FORMAT() { return "the version codes select no database format"; }

  std::string BAD_STEP(int64_t step) const {
    if (dims_.NUM_TIME_STEPS < 1) return "the job has no time steps";
    return "step " + std::to_string(step) + " is not one of the job's steps, 1 to " +
           std::to_string(dims_.NUM_TIME_STEPS);
  }
  std::string BAD_COUNT(int64_t count) const {
    if (count < 0) return "a history of " + std::to_string(count) + " steps cannot be";
    return "a history of " + std::to_string(count) + " steps is longer than the job's " +
           std::to_string(dims_.NUM_TIME_STEPS > 0 ? dims_.NUM_TIME_STEPS : 0) + " steps";
  }

  // The reasons of a request's error mask, in words. `asked` holds the
  // node, element and position after a label was looked up.
  std::string REQUEST_FAILURE(const REQUEST& request, const REQUEST& asked, int32_t mask, int32_t step,
                              bool history) const {
    const int32_t type = request.OUTPUT_TYPE;
    const OUTPUT_TYPE_INFO* info = DESCRIBE_OUTPUT_TYPE(type);
    const bool by_label = type > 4 && request.NODE < 1 && request.ELEMENT < 1;
    std::vector<std::string> reasons;
    const auto has = [mask](int32_t bit) { return (mask & bit) != 0; };

    if ((mask & 3) == 3) reasons.push_back(NO_FORMAT());
    if (type == OUTPUT_TYPE::CLASHING && request.SUBTYPE >= 1 && request.SUBTYPE <= 3 && (mask & 12) == 12) {
      reasons.push_back("clashing subtype " + std::to_string(request.SUBTYPE) + " needs the " +
                        (request.SUBTYPE == 1 ? "motion" : "force") + " database, which does not exist");
    } else {
      if (has(4)) {
        if (info == nullptr) {
          reasons.push_back("output type " + std::to_string(type) + " is not one of 1 to 18");
        } else {
          const bool force = info->FILE == NEEDS::FORCE;
          reasons.push_back(detail::TYPE_NAME(type) + " needs the " + (force ? "force" : "motion") +
                            " database, which does not exist");
        }
      }
      if (has(8) && info != nullptr) {
        reasons.push_back("subtype " + std::to_string(request.SUBTYPE) + " of " + detail::TYPE_NAME(type) +
                          " is not one of 1 to " + std::to_string(info->MAX_SUBTYPE));
      }
    }
    if (has(128)) reasons.push_back("the job has no time steps");
    if (has(256)) {
      reasons.push_back(history ? BAD_COUNT(step) : BAD_STEP(step));
    }
    if (has(1024)) {
      const bool blank = request.LABEL.find_first_not_of(' ') == std::string::npos;
      if (!blank) {
        reasons.push_back("label " + detail::QUOTED(request.LABEL) + " is not in the database");
      } else if (request.ELEMENT < 0) {
        // The library takes a request whose node and element are both below
        // 1 as one that names its item by label.
        reasons.push_back("element " + std::to_string(request.ELEMENT) +
                          " is below 1, so the request looks for a label, and names none");
      } else {
        reasons.push_back("the request names no item: give a number above 0 or a label");
      }
    }
    if (has(64)) {
      reasons.push_back("position " + std::to_string(asked.POSITION) +
                        " is not 1, 2 or 3 (start, middle or end of the element)");
    }
    if (has(4096) && info != nullptr) reasons.push_back(ITEM_NOT_FOUND(*info, asked, by_label));
    if (has(8192)) {
      if (by_label && asked.ELEMENT == 0 && asked.NODE > 0) {
        reasons.push_back("label " + detail::QUOTED(request.LABEL) + " names node " + std::to_string(asked.NODE) +
                          ", not an element");
      } else {
        reasons.push_back(detail::ITEM_WORDS(ITEM::ELEMENT, asked.ELEMENT) + " is not in the database");
      }
    }
    if (has(2048)) reasons.push_back(detail::NOT_WRITTEN(type, request.SUBTYPE));
    if (has(16384)) reasons.push_back("the value could not be read or computed from the database");
    if (reasons.empty()) reasons.push_back("the request was refused with error mask " + std::to_string(mask));
    return detail::JOINED(reasons);
  }

  std::string ITEM_NOT_FOUND(const OUTPUT_TYPE_INFO& info, const REQUEST& asked, bool by_label) const {
    if (by_label && asked.NODE == 0 && asked.ELEMENT > 0) {
      return "label " + detail::QUOTED(asked.LABEL) + " names element " + std::to_string(asked.ELEMENT) +
             ", not a node";
    }
    const int32_t number = asked.NODE;
    std::string text = detail::ITEM_WORDS(info.ITEM_KIND, number);
    int32_t count = -1;
    switch (info.ITEM_KIND) {
      case ITEM::BOUNDARY_NODE:
        if (HAS_NODE(number)) return text + " has no boundary condition, so no reaction";
        break;
      case ITEM::GUIDE_SURFACE:
        count = dims_.NUM_GUIDE_SURFACES;
        break;
      case ITEM::ZERO_GAP_GUIDE:
        count = dims_.NUM_ZERO_GAP_GUIDES;
        break;
      case ITEM::CLASH_PAIR:
        count = dims_.NUM_CLASH_PAIRS;
        break;
      case ITEM::PIP_CONNECTION:
        count = dims_.NUM_PIP_CONNECTIONS;
        break;
      default:
        break;
    }
    text += " is not in the database";
    if (count >= 0) text += " (it has " + std::to_string(count) + ")";
    return text;
  }

  // The records of the larger of the job's files, by which no history can
  // have more steps than that whatever the header says; -1 when the files
  // cannot be measured.
  static int64_t FRAMES_ROOM(const std::string& path, const VERSION_CODES& codes) {
    int64_t room = -1;
    const std::pair<int32_t, const char*> files[] = {{codes.MOTION, ".dbm"}, {codes.FORCE, ".dbf"}};
    for (const auto& [code, extension] : files) {
      if (code < 1) continue;
      std::error_code failed;
      const std::uintmax_t bytes =
          std::filesystem::file_size(std::filesystem::path(path).replace_extension(extension), failed);
      if (!failed) room = std::max(room, static_cast<int64_t>(bytes / 32U));
    }
    return room;
  }

  std::string path_;
  VERSION_CODES codes_;
  MODEL_DIMENSIONS dims_;
  int64_t frames_room_ = -1;
  bool owner_ = false;
};

}  // namespace tmrdar

#endif /* TMRDAR_TMRDAR_HPP */
