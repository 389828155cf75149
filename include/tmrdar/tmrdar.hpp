/*
 * tmrdar: the C++ interface over the twelve exports of tmrdar.h.
 *
 *   tmrdar::job job("runs/riser");                 // opens runs/riser.dbm and .dbf
 *   std::printf("%d steps\n", job.dimensions().num_time_steps);
 *   const tmrdar::node_properties top = job.node(1);
 *   tmrdar::request tension;
 *   tension.output_type = tmrdar::output_type::element_force;
 *   tension.subtype = tmrdar::element_force::section_1;
 *   tension.element = 12;
 *   tension.position = tmrdar::position::middle;
 *   const std::vector<float> history = job.history(tension);  // one value a step
 *                                                              // job closes here
 *
 * Every failure, a negative result code of an export or the error mask of a
 * request, becomes a tmrdar::error whose message says in words what was
 * wrong, and whose code() is the export's own result.
 *
 * The library holds one job at a time in the process, so one job may be open
 * at a time: opening a second while the first is open throws. A job closes
 * its job when it goes out of scope; it can be moved, not copied. Calls of
 * one job from several threads are serialised by the library.
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

namespace output_type {
inline constexpr int32_t time = 1;                      // time of the step
inline constexpr int32_t step_word_3 = 2;               // third word of the step record
inline constexpr int32_t surface_elevation = 3;         // water surface elevation
inline constexpr int32_t step_word_5 = 4;               // fifth word of the step record
inline constexpr int32_t displacement = 5;              // of a node; subtypes in nodal
inline constexpr int32_t velocity = 6;                  // of a node; subtypes in nodal
inline constexpr int32_t acceleration = 7;              // of a node; subtypes in nodal
inline constexpr int32_t guide_surface = 8;             // word 1 to 9 of a guide surface entry
inline constexpr int32_t zero_gap_guide = 9;            // word 1 to 6 of a zero gap guide entry
inline constexpr int32_t node_contact = 10;             // word 1 to 7 of a node's contact entry
inline constexpr int32_t clashing = 11;                 // of a clash pair; subtypes in clashing
inline constexpr int32_t aux_node = 12;                 // word 1 to 3 of an auxiliary node
inline constexpr int32_t reaction = 13;                 // at a node with a boundary condition; subtypes in nodal
inline constexpr int32_t guide_surface_reaction = 14;   // subtypes in contact_reaction
inline constexpr int32_t zero_gap_guide_reaction = 15;  // subtypes in contact_reaction
inline constexpr int32_t pipe_in_pipe_reaction = 16;    // subtypes in contact_reaction
inline constexpr int32_t element_force = 17;            // at a position of an element; subtypes in element_force
inline constexpr int32_t element_pressure = 18;         // at a position of an element; subtypes in pressure
}  // namespace output_type

// Subtypes of displacement, velocity, acceleration and reaction: the six
// stored components of a node entry, and the resultant of components 4 to 6.
namespace nodal {
inline constexpr int32_t component_1 = 1;
inline constexpr int32_t component_2 = 2;
inline constexpr int32_t component_3 = 3;
inline constexpr int32_t component_4 = 4;
inline constexpr int32_t component_5 = 5;
inline constexpr int32_t component_6 = 6;
inline constexpr int32_t resultant_4_to_6 = 7;
}  // namespace nodal

// Subtypes of guide_surface_reaction, zero_gap_guide_reaction and
// pipe_in_pipe_reaction: the three stored components and their magnitude.
namespace contact_reaction {
inline constexpr int32_t component_1 = 1;
inline constexpr int32_t component_2 = 2;
inline constexpr int32_t component_3 = 3;
inline constexpr int32_t magnitude = 4;
}  // namespace contact_reaction

// Subtypes of clashing: the pair's word of the motion database, and the two
// words of the pair's clashing force in the force database.
namespace clashing {
inline constexpr int32_t motion_word = 1;
inline constexpr int32_t force_word_1 = 2;
inline constexpr int32_t force_word_2 = 3;
}  // namespace clashing

// Subtypes of element_force: the ten element sections of the force database,
// two resultants of two sections each, and the element temperature.
namespace element_force {
inline constexpr int32_t section_1 = 1;
inline constexpr int32_t section_2 = 2;
inline constexpr int32_t section_3 = 3;
inline constexpr int32_t section_4 = 4;
inline constexpr int32_t section_5 = 5;
inline constexpr int32_t section_6 = 6;
inline constexpr int32_t section_7 = 7;
inline constexpr int32_t resultant_5_6 = 8;  // square root of the sum of squares of sections 5 and 6
inline constexpr int32_t resultant_8_9 = 9;  // the same of sections 8 and 9
inline constexpr int32_t unused_10 = 10;     // accepted, and always 0
inline constexpr int32_t section_8 = 11;
inline constexpr int32_t section_9 = 12;
inline constexpr int32_t section_10 = 13;
inline constexpr int32_t temperature = 14;
}  // namespace element_force

// Subtypes of element_pressure: the two pressures stored at each position.
namespace pressure {
inline constexpr int32_t first = 1;
inline constexpr int32_t second = 2;
}  // namespace pressure

// Positions on an element, of element_force and element_pressure and of the
// distance along the riser.
namespace position {
inline constexpr int32_t start = 1;
inline constexpr int32_t middle = 2;
inline constexpr int32_t end = 3;
}  // namespace position

// Kinds of nodes and elements.
namespace kind {
inline constexpr int32_t structure = 0;
inline constexpr int32_t auxiliary = 1;
}  // namespace kind

// What names the item of an output type's request.
enum class item {
  none,            // the step alone
  node,            // a node number
  boundary_node,   // a node number of a node with a boundary condition
  guide_surface,   // a guide surface entry, from 1
  zero_gap_guide,  // a zero gap guide entry, from 1
  clash_pair,      // a clash pair entry, from 1
  aux_node,        // an auxiliary node number
  pip_connection,  // a pipe-in-pipe connection entry, from 1
  element          // an element number and a position on it
};

// Which database file an output type reads.
enum class needs { nothing, motion, force, motion_or_force_by_subtype };

struct output_type_info {
  int32_t type;
  const char* name;     // a short name: lower case words joined by '-'
  const char* meaning;  // in a few words, for people
  int32_t max_subtype;  // subtypes 1 to this; 0 when the subtype is not looked at
  item item_kind;
  needs file;
};

// The output types 1 to 18, in order.
inline const std::array<output_type_info, 18>& output_types() {
  static const std::array<output_type_info, 18> types{{
      {1, "time", "time of the step", 0, item::none, needs::nothing},
      {2, "step-word-3", "third word of the step record", 0, item::none, needs::nothing},
      {3, "surface-elevation", "water surface elevation", 0, item::none, needs::nothing},
      {4, "step-word-5", "fifth word of the step record", 0, item::none, needs::nothing},
      {5, "displacement", "nodal displacement", 7, item::node, needs::motion},
      {6, "velocity", "nodal velocity", 7, item::node, needs::motion},
      {7, "acceleration", "nodal acceleration", 7, item::node, needs::motion},
      {8, "guide-surface", "guide surface result", 9, item::guide_surface, needs::motion},
      {9, "zero-gap-guide", "zero gap guide result", 6, item::zero_gap_guide, needs::motion},
      {10, "node-contact", "node contact result", 7, item::node, needs::motion},
      {11, "clashing", "clashing result", 3, item::clash_pair, needs::motion_or_force_by_subtype},
      {12, "aux-node", "auxiliary node result", 3, item::aux_node, needs::motion},
      {13, "reaction", "reaction at a boundary condition", 7, item::boundary_node, needs::force},
      {14, "guide-surface-reaction", "guide surface reaction", 4, item::guide_surface, needs::force},
      {15, "zero-gap-guide-reaction", "zero gap guide reaction", 4, item::zero_gap_guide, needs::force},
      {16, "pipe-in-pipe-reaction", "pipe-in-pipe reaction", 4, item::pip_connection, needs::force},
      {17, "element-force", "element force result", 14, item::element, needs::force},
      {18, "element-pressure", "element pressure", 2, item::element, needs::force},
  }};
  return types;
}

// The description of an output type, or nullptr outside 1 to 18.
inline const output_type_info* describe_output_type(int32_t type) {
  if (type < 1 || type > 18) return nullptr;
  return &output_types()[static_cast<std::size_t>(type - 1)];
}

// The format a database version code names ("V861" for 13), or nullptr.
inline const char* format_name(int32_t code) {
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

// A failure of an export, told in words. code() is the export's result: a
// negative code, or the error mask of a request. A step or count outside the
// job, which the interface refuses before asking, has the mask value 256 that
// the library gives it; a second open and a call of a closed job have 0.
class error : public std::runtime_error {
 public:
  error(const std::string& message, int32_t code) : std::runtime_error(message), code_(code) {}
  int32_t code() const noexcept { return code_; }

 private:
  int32_t code_;
};

// The two files of a job as GetDatabaseInfo found them.
struct version_codes {
  int32_t motion = 0;                     // version code of the .dbm file; 0 missing, -1 unreadable
  int32_t force = 0;                      // the same of the .dbf file
  std::array<int32_t, 5> motion_words{};  // words 4 to 8 of each file's first record
  std::array<int32_t, 5> force_words{};
};

// The 14 model dimensions, in the order that GetDatabaseInfo gives them.
struct model_dimensions {
  int32_t num_time_steps = 0;
  int32_t pip_nodes_per_pair = 0;
  int32_t num_elements = 0;
  int32_t num_nodes = 0;
  int32_t num_aux_elements = 0;
  int32_t num_aux_nodes = 0;
  int32_t num_labels = 0;
  int32_t num_boundary_conditions = 0;
  int32_t num_guide_surfaces = 0;
  int32_t num_zero_gap_guides = 0;
  int32_t num_pipe_in_pipe = 0;
  int32_t num_pip_connections = 0;  // entries of the pipe-in-pipe reactions
  int32_t num_clash_pairs = 0;
  int32_t num_nonlinear_e_tables = 0;  // rows of the stress-strain table

  std::array<int32_t, 14> as_array() const {
    return {num_time_steps,     pip_nodes_per_pair,    num_elements,     num_nodes,
            num_aux_elements,   num_aux_nodes,         num_labels,       num_boundary_conditions,
            num_guide_surfaces, num_zero_gap_guides,   num_pipe_in_pipe, num_pip_connections,
            num_clash_pairs,    num_nonlinear_e_tables};
  }
};

struct analysis_details {
  int32_t detail_1 = 0;
  int32_t detail_2 = 0;
  float detail_3 = 0.0F;
  std::string title;  // without trailing blanks
};

struct node_properties {
  int32_t number = 0;
  int32_t kind = kind::structure;
  int32_t row = 0;  // the node's row in its table, from 1
  std::array<float, 3> coordinates{};
};

// An element's properties. An auxiliary element has row, nodes and A8 (word 8
// of its first record); its other fields keep the marks -1 and -1.0.
struct element_properties {
  int32_t number = 0;
  int32_t kind = kind::structure;
  int32_t row = 0;                       // the element's row, from 1
  std::array<int32_t, 2> nodes{-1, -1};  // numbers of its end nodes; -1 for an end that names no node
  int32_t a8 = -1;                       // word 8 of its first record
  int32_t b5 = -1;                       // word 5 of its second record
  int32_t section_2 = -1;                // words 2 and 4 of its section record, to the nearest integer
  int32_t section_4 = -1;
  float length = -1.0F;
  std::array<float, 3> external_fluid{-1.0F, -1.0F, -1.0F};
  std::array<float, 4> b1_to_b4{-1.0F, -1.0F, -1.0F, -1.0F};  // words 1 to 4 of its second record
  float section_3 = -1.0F;                                    // word 3 of its section record
  float a6 = -1.0F;                                           // words 6 and 7 of its first record
  float a7 = -1.0F;
  std::array<float, 3> b6_to_b8{-1.0F, -1.0F, -1.0F};  // words 6 to 8 of its second record
  float c1 = -1.0F;                                    // word 1 of its third record
};

// One point of a stress-strain curve: its two values in stored order.
struct curve_point {
  float first = 0.0F;
  float second = 0.0F;
};

// A request for a value or a history. The item is named by node (a node
// number, or the entry of a guide, clash pair or pipe-in-pipe connection) or
// by element and position, as the output type's item_kind says; or, with node
// and element both below 1, by label.
struct request {
  int32_t output_type = output_type::time;
  int32_t subtype = 1;
  int32_t node = 0;
  int32_t element = 0;
  int32_t position = position::start;
  std::string label;
};

// Node and element lists, found number by number (see job::list_nodes).
struct node_list {
  std::vector<node_properties> nodes;  // in row order
  int32_t unlisted_rows = 0;           // rows whose number was not among those asked
};
struct element_list {
  std::vector<element_properties> elements;  // in row order
  int32_t unlisted_rows = 0;
};

// The statistics of a history over steps first_step to last_step: its
// extremes as stored, with the step of each (the first step when the
// extreme repeats), and its mean and standard deviation (of the whole
// population, dividing by the number of steps), summed in double precision.
struct history_statistics {
  int32_t first_step = 0;
  int32_t last_step = 0;
  float minimum = 0.0F;
  int32_t minimum_step = 0;
  float maximum = 0.0F;
  int32_t maximum_step = 0;
  double mean = 0.0;
  double standard_deviation = 0.0;
};

// A place along the riser that a result belongs to: a node (element 0), or a
// position of an element (node 0), with its distance along the riser.
struct riser_point {
  int32_t node = 0;
  int32_t element = 0;
  int32_t position = 0;
  float distance = 0.0F;
};

// One result at one step at a point along the riser.
struct snapshot_point {
  riser_point point;
  float value = 0.0F;
};

// The statistics of one result's history at a point along the riser.
struct range_point {
  riser_point point;
  history_statistics statistics;
};

// The statistics of `count` values, the first of which is that of step
// `first_step`. A count of 0 gives the statistics of nothing: all zero.
inline history_statistics statistics_of(const float* values, std::size_t count, int32_t first_step = 1) {
  history_statistics stats;
  stats.first_step = first_step;
  stats.last_step = first_step + static_cast<int32_t>(count) - 1;
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
  stats.minimum = values[lowest];
  stats.minimum_step = first_step + static_cast<int32_t>(lowest);
  stats.maximum = values[highest];
  stats.maximum_step = first_step + static_cast<int32_t>(highest);
  stats.mean = mean;
  stats.standard_deviation = std::sqrt(squares / static_cast<double>(count));
  return stats;
}

namespace detail {

inline std::string quoted(const std::string& text) { return "\"" + text + "\""; }

inline std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : "; ") + part;
  return text;
}

inline std::string type_name(int32_t type) {
  const output_type_info* info = describe_output_type(type);
  return "output type " + std::to_string(type) + (info != nullptr ? std::string(" (") + info->name + ")" : "");
}

inline std::string file_state(const char* which, int32_t code) {
  std::string text = std::string("the ") + which + " database";
  if (code == 0) return text + " does not exist";
  if (code < 0) return text + " cannot be read";
  const char* name = format_name(code);
  return text + " has version code " + std::to_string(code) +
         (name != nullptr ? std::string(" (") + name + ")" : std::string(", a format this library does not read"));
}

inline std::string cannot_open(const std::string& path, const version_codes& codes, int32_t result) {
  if (result == -1) return "the job path is blank";
  if (codes.motion == 0 && codes.force == 0) {
    return "no database files found for " + path + " (looked for .dbm and .dbf)";
  }
  std::string reason;
  if (codes.motion > 0 && codes.force > 0 && codes.motion != codes.force) {
    reason = "the motion database (version code " + std::to_string(codes.motion) +
             ") and the force database (version code " + std::to_string(codes.force) + ") are of different formats";
  } else {
    reason = file_state("motion", codes.motion) + ", and " + file_state("force", codes.force);
  }
  return "no usable database in " + path + ": " + reason;
}

// Numbers of a lookup found wanting, in words.
inline std::string item_words(item item, int32_t number) {
  switch (item) {
    case item::guide_surface:
      return "guide surface " + std::to_string(number);
    case item::zero_gap_guide:
      return "zero gap guide " + std::to_string(number);
    case item::clash_pair:
      return "clash pair " + std::to_string(number);
    case item::aux_node:
      return "auxiliary node " + std::to_string(number);
    case item::pip_connection:
      return "pipe-in-pipe connection " + std::to_string(number);
    case item::element:
      return number < 0 ? "auxiliary element " + std::to_string(-static_cast<int64_t>(number))
                        : "element " + std::to_string(number);
    default:
      return "node " + std::to_string(number);
  }
}

// What the frames lack when a request gets the mask value 2048.
inline std::string not_written(int32_t type, int32_t subtype) {
  switch (type) {
    case output_type::displacement:
      return "the motion database holds no nodal displacements";
    case output_type::velocity:
      return "the motion database holds no nodal velocities";
    case output_type::acceleration:
      return "the motion database holds no nodal accelerations";
    case output_type::element_pressure:
      return "the force database holds no element pressures";
    case output_type::element_force:
      switch (subtype) {
        case element_force::resultant_5_6:
          return "the force database lacks element section 5 or 6";
        case element_force::resultant_8_9:
          return "the force database lacks element section 8 or 9";
        case element_force::unused_10:
          return "the force database lacks element section 2 or 3";
        case element_force::temperature:
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

class job {
 public:
  // Opens the job at `path`: any extension, or none, selects <stem>.dbm and
  // <stem>.dbf. Throws error when no usable database is there, or when
  // another job is open.
  explicit job(const std::string& path) : path_(path) {
    bool expected = false;
    if (!is_open_flag().compare_exchange_strong(expected, true)) {
      throw error("another job is open: the library holds one job at a time", 0);
    }
    std::array<int32_t, 14> dims{};
    const int32_t n = 14;
    const int32_t result =
        ::GetDatabaseInfo(&codes_.motion, &codes_.force, codes_.motion_words.data(), codes_.force_words.data(), &n,
                          dims.data(), path.data(), static_cast<int64_t>(path.size()));
    if (result != 0) {
      ::XIT();
      is_open_flag().store(false);
      throw error(detail::cannot_open(path, codes_, result), result);
    }
    owner_ = true;
    frames_room_ = frames_room(path, codes_);
    int32_t* fields[14] = {&dims_.num_time_steps,      &dims_.pip_nodes_per_pair,      &dims_.num_elements,
                           &dims_.num_nodes,           &dims_.num_aux_elements,        &dims_.num_aux_nodes,
                           &dims_.num_labels,          &dims_.num_boundary_conditions, &dims_.num_guide_surfaces,
                           &dims_.num_zero_gap_guides, &dims_.num_pipe_in_pipe,        &dims_.num_pip_connections,
                           &dims_.num_clash_pairs,     &dims_.num_nonlinear_e_tables};
    for (std::size_t i = 0; i < dims.size(); ++i) *fields[i] = dims[i];
  }

  ~job() {
    if (owner_) {
      ::XIT();
      is_open_flag().store(false);
    }
  }

  job(const job&) = delete;
  job& operator=(const job&) = delete;
  job(job&& other) noexcept
      : path_(std::move(other.path_)),
        codes_(other.codes_),
        dims_(other.dims_),
        frames_room_(other.frames_room_),
        owner_(other.owner_) {
    other.owner_ = false;
  }
  job& operator=(job&& other) noexcept {
    if (this != &other) {
      if (owner_) {
        ::XIT();
        is_open_flag().store(false);
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

  // Closes the job now. Throws error when closing a file failed; the job
  // counts as closed all the same.
  void close() {
    if (!owner_) return;
    owner_ = false;
    const int32_t result = ::XIT();
    is_open_flag().store(false);
    if (result != 0) {
      const char* which = result == 1 ? "the motion database" : result == 2 ? "the force database" : "both databases";
      throw error(std::string("closing ") + which + " failed", result);
    }
  }

  bool is_open() const noexcept { return owner_; }
  const std::string& path() const noexcept { return path_; }
  const version_codes& codes() const noexcept { return codes_; }
  const model_dimensions& dimensions() const noexcept { return dims_; }

  analysis_details details() const {
    check_open();
    analysis_details details;
    std::string title(1024, ' ');
    const int32_t result = ::GetAnalysisDetails(&details.detail_1, &details.detail_2, &details.detail_3, &title[0],
                                                static_cast<int64_t>(title.size()));
    if (result == 0) {
      title.erase(title.find_last_not_of(' ') + 1);
      details.title = title;
    }
    return details;
  }

  // The coordinates of a node. Throws error when there is no such node.
  node_properties node(int32_t number, int32_t kind = kind::structure) const {
    check_open();
    node_properties node;
    node.number = number;
    node.kind = kind;
    const int32_t result =
        ::GetNodeProperties(&codes_.motion, &codes_.force, &number, &kind, node.coordinates.data());
    if (result > 0) {
      node.row = result;
      return node;
    }
    if (result == -2) throw error("node kind " + std::to_string(kind) + " is neither 0 nor 1", result);
    if (result == -1) throw error(no_format(), result);
    throw error(
        (kind == kind::auxiliary ? "auxiliary node " : "node ") + std::to_string(number) + " is not in the database",
        result);
  }
  // Whether a node with that number is in the database.
  bool has_node(int32_t number, int32_t kind = kind::structure) const {
    check_open();
    std::array<float, 3> xyz{};
    return ::GetNodeProperties(&codes_.motion, &codes_.force, &number, &kind, xyz.data()) > 0;
  }

  // The properties of an element. With kind structure a negative number names
  // the auxiliary element of that number made positive. Throws error when
  // there is no such element.
  element_properties element(int32_t number, int32_t kind = kind::structure) const {
    check_open();
    std::array<int32_t, 15> ints{};
    std::array<float, 15> reals{};
    const int32_t length = 15;
    const int32_t result =
        ::GetElementProperties(&codes_.motion, &codes_.force, &number, &kind, &length, ints.data(), reals.data());
    if (result == -3) throw error("element kind " + std::to_string(kind) + " is neither 0 nor 1", result);
    if (result == -2) throw error(no_format(), result);
    if (result == -1) {
      const bool auxiliary = kind == kind::auxiliary || number < 0;
      const int64_t shown = kind == kind::structure && number < 0 ? -static_cast<int64_t>(number) : number;
      throw error(
          (auxiliary ? "auxiliary element " : "element ") + std::to_string(shown) + " is not in the database",
          result);
    }
    if (result != 0) throw error("the element properties need " + std::to_string(result) + " slots", result);
    element_properties element;
    element.number = number;
    element.kind = kind;
    if (kind == kind::structure && number < 0) {
      // The answer is the auxiliary element's, whose number is this one made positive.
      element.kind = kind::auxiliary;
      element.number = number > INT32_MIN ? -number : number;
    }
    element.row = ints[0];
    element.nodes = {ints[1], ints[2]};
    element.a8 = ints[3];
    if (element.kind == kind::auxiliary) return element;
    element.b5 = ints[4];
    element.section_2 = ints[5];
    element.section_4 = ints[6];
    element.length = reals[0];
    element.external_fluid = {reals[1], reals[2], reals[3]};
    element.b1_to_b4 = {reals[4], reals[5], reals[6], reals[7]};
    element.section_3 = reals[8];
    element.a6 = reals[9];
    element.a7 = reals[10];
    element.b6_to_b8 = {reals[11], reals[12], reals[13]};
    element.c1 = reals[14];
    return element;
  }
  bool has_element(int32_t number, int32_t kind = kind::structure) const {
    check_open();
    std::array<int32_t, 15> ints{};
    std::array<float, 15> reals{};
    const int32_t length = 15;
    return ::GetElementProperties(&codes_.motion, &codes_.force, &number, &kind, &length, ints.data(),
                                  reals.data()) == 0;
  }

  // How far along the riser the start, middle or end (position) of an element
  // of the structure lies, the element rows laid end to end in row order.
  float distance(int32_t element, int32_t position = position::start) const {
    check_open();
    float distance = 0.0F;
    const int32_t result = ::GetDistanceAlongRiser(&codes_.motion, &codes_.force, &element, &position, &distance);
    if (result == 0) return distance;
    if (result == -2) {
      throw error(
          "position " + std::to_string(position) + " is not 1, 2 or 3 (start, middle or end of the element)", result);
    }
    if (result == -3) throw error(no_format(), result);
    if (element < 1) {
      throw error("element " + std::to_string(element) +
                        " has no place along the riser: only elements of the structure, numbered from 1, have one",
                    result);
    }
    throw error("element " + std::to_string(element) + " is not in the database", result);
  }

  // The points of stress-strain curve `id`, in stored order. Throws error
  // when the curve is not in the database; a curve whose stored count is
  // negative gives no points.
  std::vector<curve_point> curve(int32_t id) const {
    check_open();
    const int32_t none = 0;
    const int32_t count = ::GetProcessedDirectStressStrainData(&codes_.motion, &codes_.force, &id, &none, nullptr);
    if (count < 0 || (count == 0 && id == 0)) {
      throw error("stress-strain curve " + std::to_string(id) + " is not in the database", count);
    }
    std::vector<curve_point> points;
    if (count == 0) return points;
    // A curve cannot hold more points than the table has rows.
    if (count > dims_.num_nonlinear_e_tables) {
      throw error("stress-strain curve " + std::to_string(id) + " claims " + std::to_string(count) +
                        " points, but the table has only " + std::to_string(dims_.num_nonlinear_e_tables) + " rows",
                    count);
    }
    std::vector<float> pairs(2 * static_cast<std::size_t>(count), 0.0F);
    const int32_t result =
        ::GetProcessedDirectStressStrainData(&codes_.motion, &codes_.force, &id, &count, pairs.data());
    if (result != 0) {
      throw error("stress-strain curve " + std::to_string(id) + " could not be read whole", result);
    }
    points.resize(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = {pairs[2 * i], pairs[2 * i + 1]};
    return points;
  }

  // One result at time step `step` (1 to num_time_steps). When `resolved` is
  // given, it receives the request with the node, element and position that a
  // label named.
  float value(const request& query, int32_t step, request* resolved = nullptr) const {
    check_open();
    if (step < 1 || step > dims_.num_time_steps) {
      throw error(bad_step(step), request_step_bad);
    }
    request asked = query;
    float value = 0.0F;
    const int32_t mask =
        ::GetRequestedSingleValue(&codes_.motion, &codes_.force, &asked.output_type, &asked.subtype, &asked.node,
                                  &asked.element, &asked.position, &dims_.num_time_steps, &step, &value,
                                  asked.label.data(), static_cast<int64_t>(asked.label.size()));
    if (resolved != nullptr) *resolved = asked;
    if (mask > 0) throw error(request_failure(query, asked, mask, step, false), mask);
    return value;
  }

  // The result at steps 1 to values' length into the caller's array. After a
  // failure part of the way, the values before the failed step are good.
  void history(const request& query, float* values, std::size_t count, request* resolved = nullptr) const {
    check_open();
    if (count > static_cast<std::size_t>(dims_.num_time_steps > 0 ? dims_.num_time_steps : 0)) {
      throw error(bad_count(static_cast<int64_t>(count)), request_step_bad);
    }
    request asked = query;
    const auto n = static_cast<int32_t>(count);
    const int32_t mask =
        ::GetRequestedHistory(&codes_.motion, &codes_.force, &asked.output_type, &asked.subtype, &asked.node,
                              &asked.element, &asked.position, &dims_.num_time_steps, &n, values, asked.label.data(),
                              static_cast<int64_t>(asked.label.size()));
    if (resolved != nullptr) *resolved = asked;
    if (mask > 0) throw error(request_failure(query, asked, mask, n, true), mask);
  }
#ifdef TMRDAR_HPP_HAS_SPAN
  void history(const request& query, std::span<float> values, request* resolved = nullptr) const {
    history(query, values.data(), values.size(), resolved);
  }
#endif
  // The result at steps 1 to `count`.
  std::vector<float> history(const request& query, int32_t count, request* resolved = nullptr) const {
    check_open();
    if (count < 0 || count > dims_.num_time_steps) {
      throw error(bad_count(count), request_step_bad);
    }
    if (frames_room_ >= 0 && count > frames_room_) {
      throw error("a history of " + std::to_string(count) + " steps cannot be read: the job's files have room " +
                        "for no more than " + std::to_string(frames_room_) + " frames, though its header counts " +
                        std::to_string(dims_.num_time_steps) + " steps",
                    request_step_bad);
    }
    std::vector<float> values(static_cast<std::size_t>(count));
    history(query, values.data(), values.size(), resolved);
    return values;
  }
  // The result at every step of the job.
  std::vector<float> history(const request& query) const { return history(query, dims_.num_time_steps); }

  // The time of every step.
  std::vector<float> times() const {
    request time;
    time.output_type = output_type::time;
    return history(time);
  }

  // The result at steps `first` to `last`, 1 <= first <= last <=
  // num_time_steps. The library reads a history from step 1, so steps 1 to
  // `last` are read and those before `first` dropped.
  std::vector<float> history_steps(const request& query, int32_t first, int32_t last,
                                   request* resolved = nullptr) const {
    check_steps(first, last);
    std::vector<float> values = history(query, last, resolved);
    values.erase(values.begin(), values.begin() + (first - 1));
    return values;
  }

  // The statistics of one result over steps `first` to `last`.
  history_statistics statistics(const request& query, int32_t first, int32_t last,
                                request* resolved = nullptr) const {
    check_steps(first, last);
    const std::vector<float> values = history(query, last, resolved);
    return statistics_of(values.data() + (first - 1), static_cast<std::size_t>(last - first + 1), first);
  }
  // The statistics of one result over the whole run.
  history_statistics statistics(const request& query) const {
    return statistics(query, 1, dims_.num_time_steps);
  }

  // The places along the riser that results of `output_type` belong to, in
  // the elements' row order: for a result of an element, its start, middle
  // and end; for a result of a node, each node that an element's end names,
  // the first time it is named. Throws error for an output type of neither.
  std::vector<riser_point> riser_points(int32_t output_type) const {
    check_open();
    const output_type_info* info = describe_output_type(output_type);
    if (info == nullptr || (info->item_kind != item::node && info->item_kind != item::element)) {
      throw error(detail::type_name(output_type) +
                        " has no place along the riser: only results of a node or an element have one",
                    0);
    }
    std::vector<riser_point> points;
    std::map<int32_t, bool> named;
    for (const element_properties& element : list_elements(kind::structure).elements) {
      if (info->item_kind == item::element) {
        for (const int32_t position : {position::start, position::middle, position::end}) {
          points.push_back({0, element.number, position, distance(element.number, position)});
        }
        continue;
      }
      for (std::size_t end = 0; end < 2; ++end) {
        const int32_t node = element.nodes[end];
        // A node numbered 0 cannot be asked for by number.
        if (node < 1 || !named.emplace(node, true).second) continue;
        points.push_back({node, 0, 0, distance(element.number, end == 0 ? position::start : position::end)});
      }
    }
    return points;
  }

  // Told after each point of a snapshot or range graph: points done, of all.
  using progress = std::function<void(std::size_t done, std::size_t total)>;

  // The result that `request`'s output type and subtype name, at step
  // `step`, at each of `points` (its item is not looked at).
  std::vector<snapshot_point> snapshot(const request& query, int32_t step, const std::vector<riser_point>& points,
                                       const progress& progress = {}) const {
    std::vector<snapshot_point> snapshot(points.size());
    request asked = query;
    for (std::size_t i = 0; i < points.size(); ++i) {
      at_point(asked, points[i]);
      snapshot[i].point = points[i];
      snapshot[i].value = value(asked, step);
      if (progress) progress(i + 1, points.size());
    }
    return snapshot;
  }
  // The same at every place along the riser (see riser_points).
  std::vector<snapshot_point> snapshot(const request& query, int32_t step, const progress& progress = {}) const {
    return snapshot(query, step, riser_points(query.output_type), progress);
  }

  // The range graph of the result that `request`'s output type and subtype
  // name, over steps `first` to `last`, at each of `points`: one history read
  // a point, into one buffer.
  std::vector<range_point> range_graph(const request& query, int32_t first, int32_t last,
                                       const std::vector<riser_point>& points, const progress& progress = {}) const {
    check_steps(first, last);
    std::vector<float> buffer(static_cast<std::size_t>(last));
    std::vector<range_point> graph(points.size());
    request asked = query;
    for (std::size_t i = 0; i < points.size(); ++i) {
      at_point(asked, points[i]);
      history(asked, buffer.data(), buffer.size());
      graph[i].point = points[i];
      graph[i].statistics =
          statistics_of(buffer.data() + (first - 1), static_cast<std::size_t>(last - first + 1), first);
      if (progress) progress(i + 1, points.size());
    }
    return graph;
  }
  // The same at every place along the riser (see riser_points).
  std::vector<range_point> range_graph(const request& query, int32_t first, int32_t last,
                                       const progress& progress = {}) const {
    check_steps(first, last);
    return range_graph(query, first, last, riser_points(query.output_type), progress);
  }

  // The nodes of one kind in row order, found by asking for their numbers:
  // first the numbers that the elements' ends name (structure nodes), then
  // 0, 1, 2 ... up to `max_number`, until every row is found. A row whose
  // number lies outside, or repeats the number of an earlier row, is not
  // listed and is counted in unlisted_rows.
  node_list list_nodes(int32_t kind = kind::structure, int32_t max_number = 1000000) const {
    check_open();
    const int64_t rows = kind == kind::auxiliary ? dims_.num_aux_nodes : dims_.num_nodes;
    // Kept by row as found: never more than the numbers asked, whatever the
    // header's count says.
    std::map<int32_t, node_properties> by_row;
    const auto ask = [&](int32_t number) {
      node_properties node;
      node.number = number;
      node.kind = kind;
      int32_t asked = number;
      int32_t k = kind;
      node.row = ::GetNodeProperties(&codes_.motion, &codes_.force, &asked, &k, node.coordinates.data());
      if (node.row >= 1 && node.row <= rows) by_row.emplace(node.row, node);
    };
    if (kind == kind::structure) {
      for (const element_properties& element : list_elements(kind::structure, max_number).elements) {
        for (const int32_t end : element.nodes) {
          if (static_cast<int64_t>(by_row.size()) < rows && end >= 0) ask(end);
        }
      }
    }
    for (int64_t number = 0; static_cast<int64_t>(by_row.size()) < rows && number <= max_number; ++number) {
      ask(static_cast<int32_t>(number));
    }
    node_list list;
    for (const auto& row : by_row) list.nodes.push_back(row.second);
    list.unlisted_rows = static_cast<int32_t>(rows - static_cast<int64_t>(list.nodes.size()));
    return list;
  }

  // The elements of one kind in row order, found by asking for the numbers
  // 1, 2 ... up to `max_number` until every row is found; unlisted_rows as
  // for list_nodes.
  element_list list_elements(int32_t kind = kind::structure, int32_t max_number = 1000000) const {
    check_open();
    const int64_t rows = kind == kind::auxiliary ? dims_.num_aux_elements : dims_.num_elements;
    std::map<int32_t, element_properties> by_row;
    for (int64_t number = 1; static_cast<int64_t>(by_row.size()) < rows && number <= max_number; ++number) {
      if (!has_element(static_cast<int32_t>(number), kind)) continue;
      const element_properties found = element(static_cast<int32_t>(number), kind);
      if (found.row >= 1 && found.row <= rows) by_row.emplace(found.row, found);
    }
    element_list list;
    for (const auto& row : by_row) list.elements.push_back(row.second);
    list.unlisted_rows = static_cast<int32_t>(rows - static_cast<int64_t>(list.elements.size()));
    return list;
  }

  // The mask value of a request's step or count that the job refused before
  // asking the library.
  static constexpr int32_t request_step_bad = 256;

 private:
  static std::atomic<bool>& is_open_flag() {
    static std::atomic<bool> open{false};
    return open;
  }

  void check_open() const {
    if (!owner_)
      throw error(path_.empty() ? std::string("the job is not open") : "the job " + path_ + " is not open", 0);
  }

  // Steps `first` to `last` must be steps of the job, in order, that its
  // files have room for.
  void check_steps(int32_t first, int32_t last) const {
    check_open();
    if (dims_.num_time_steps < 1) throw error("the job has no time steps", request_step_bad);
    if (first < 1 || first > dims_.num_time_steps) throw error(bad_step(first), request_step_bad);
    if (last < 1 || last > dims_.num_time_steps) throw error(bad_step(last), request_step_bad);
    if (first > last) {
      throw error("the first step " + std::to_string(first) + " comes after the last step " + std::to_string(last),
                    request_step_bad);
    }
    if (frames_room_ >= 0 && last > frames_room_) {
      throw error("step " + std::to_string(last) + " cannot be read: the job's files have room for no more than " +
                        std::to_string(frames_room_) + " frames, though its header counts " +
                        std::to_string(dims_.num_time_steps) + " steps",
                    request_step_bad);
    }
  }

  // The request of the same output type and subtype at `point`.
  static void at_point(request& query, const riser_point& point) {
    query.label.clear();
    query.node = point.node;
    query.element = point.element;
    query.position = point.element > 0 ? point.position : position::start;
  }

  static std::string no_format() { return "the version codes select no database format"; }

  std::string bad_step(int64_t step) const {
    if (dims_.num_time_steps < 1) return "the job has no time steps";
    return "step " + std::to_string(step) + " is not one of the job's steps, 1 to " +
           std::to_string(dims_.num_time_steps);
  }
  std::string bad_count(int64_t count) const {
    if (count < 0) return "a history of " + std::to_string(count) + " steps cannot be";
    return "a history of " + std::to_string(count) + " steps is longer than the job's " +
           std::to_string(dims_.num_time_steps > 0 ? dims_.num_time_steps : 0) + " steps";
  }

  // The reasons of a request's error mask, in words. `asked` holds the
  // node, element and position after a label was looked up.
  std::string request_failure(const request& query, const request& asked, int32_t mask, int32_t step,
                              bool history) const {
    const int32_t type = query.output_type;
    const output_type_info* info = describe_output_type(type);
    const bool by_label = type > 4 && query.node < 1 && query.element < 1;
    std::vector<std::string> reasons;
    const auto has = [mask](int32_t bit) { return (mask & bit) != 0; };

    if ((mask & 3) == 3) reasons.push_back(no_format());
    if (type == output_type::clashing && query.subtype >= 1 && query.subtype <= 3 && (mask & 12) == 12) {
      reasons.push_back("clashing subtype " + std::to_string(query.subtype) + " needs the " +
                        (query.subtype == 1 ? "motion" : "force") + " database, which does not exist");
    } else {
      if (has(4)) {
        if (info == nullptr) {
          reasons.push_back("output type " + std::to_string(type) + " is not one of 1 to 18");
        } else {
          const bool force = info->file == needs::force;
          reasons.push_back(detail::type_name(type) + " needs the " + (force ? "force" : "motion") +
                            " database, which does not exist");
        }
      }
      if (has(8) && info != nullptr) {
        reasons.push_back("subtype " + std::to_string(query.subtype) + " of " + detail::type_name(type) +
                          " is not one of 1 to " + std::to_string(info->max_subtype));
      }
    }
    if (has(128)) reasons.push_back("the job has no time steps");
    if (has(256)) {
      reasons.push_back(history ? bad_count(step) : bad_step(step));
    }
    if (has(1024)) {
      const bool blank = query.label.find_first_not_of(' ') == std::string::npos;
      if (!blank) {
        reasons.push_back("label " + detail::quoted(query.label) + " is not in the database");
      } else if (query.element < 0) {
        // The library takes a request whose node and element are both below
        // 1 as one that names its item by label.
        reasons.push_back("element " + std::to_string(query.element) +
                          " is below 1, so the request looks for a label, and names none");
      } else {
        reasons.push_back("the request names no item: give a number above 0 or a label");
      }
    }
    if (has(64)) {
      reasons.push_back("position " + std::to_string(asked.position) +
                        " is not 1, 2 or 3 (start, middle or end of the element)");
    }
    if (has(4096) && info != nullptr) reasons.push_back(item_not_found(*info, asked, by_label));
    if (has(8192)) {
      if (by_label && asked.element == 0 && asked.node > 0) {
        reasons.push_back("label " + detail::quoted(query.label) + " names node " + std::to_string(asked.node) +
                          ", not an element");
      } else {
        reasons.push_back(detail::item_words(item::element, asked.element) + " is not in the database");
      }
    }
    if (has(2048)) reasons.push_back(detail::not_written(type, query.subtype));
    if (has(16384)) reasons.push_back("the value could not be read or computed from the database");
    if (reasons.empty()) reasons.push_back("the request was refused with error mask " + std::to_string(mask));
    return detail::joined(reasons);
  }

  std::string item_not_found(const output_type_info& info, const request& asked, bool by_label) const {
    if (by_label && asked.node == 0 && asked.element > 0) {
      return "label " + detail::quoted(asked.label) + " names element " + std::to_string(asked.element) +
             ", not a node";
    }
    const int32_t number = asked.node;
    std::string text = detail::item_words(info.item_kind, number);
    int32_t count = -1;
    switch (info.item_kind) {
      case item::boundary_node:
        if (has_node(number)) return text + " has no boundary condition, so no reaction";
        break;
      case item::guide_surface:
        count = dims_.num_guide_surfaces;
        break;
      case item::zero_gap_guide:
        count = dims_.num_zero_gap_guides;
        break;
      case item::clash_pair:
        count = dims_.num_clash_pairs;
        break;
      case item::pip_connection:
        count = dims_.num_pip_connections;
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
  static int64_t frames_room(const std::string& path, const version_codes& codes) {
    int64_t room = -1;
    const std::pair<int32_t, const char*> files[] = {{codes.motion, ".dbm"}, {codes.force, ".dbf"}};
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
  version_codes codes_;
  model_dimensions dims_;
  int64_t frames_room_ = -1;
  bool owner_ = false;
};

}  // namespace tmrdar

#endif /* TMRDAR_TMRDAR_HPP */
