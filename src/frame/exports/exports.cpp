// The twelve exports: argument conversion at the boundary, the lock, and the
// tests that the frame makes before a format's reader is asked.
#include "tmrdar/tmrdar.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string_view>

#include "core/file/mapped_file.h"
#include "frame/exports/library_state.h"
#include "frame/exports/request_checks.h"
#include "results/requests.h"
#include "model_queries/model_queries.h"

namespace {

using tmrdar::frame::library_lock;

// Runs the body under the library lock. Nothing may leave an export as an
// exception; should the body throw all the same (memory exhausted), the
// export answers `fallback`.
template <typename Body>
int32_t guarded(int32_t fallback, Body body) noexcept {
  try {
    const std::lock_guard<std::mutex> hold(library_lock());
    // A file that another program changed since the last export is seen at
    // its new size from here on.
    tmrdar::record_files::refresh_open_files();
    return body();
  } catch (...) {
    return fallback;
  }
}

int32_t value_at(const int32_t* p) { return p != nullptr ? *p : 0; }

std::string_view string(const char* text, int64_t length) {
  return text != nullptr && length > 0 ? std::string_view(text, static_cast<std::size_t>(length))
                                       : std::string_view();
}

template <typename T>
std::span<T> array(T* items, int64_t length) {
  return items != nullptr && length > 0 ? std::span<T>(items, static_cast<std::size_t>(length)) : std::span<T>();
}

tmrdar::header::FormatReader* module_name(const int32_t* motion_code, const int32_t* force_code) {
  return tmrdar::frame::selected_reader(value_at(motion_code), value_at(force_code));
}

// The road of a request: the frame's checks of its arguments (a label the
// request names its item by gives the node or element, and the kind in place
// of the position), then the selected format's reader. The mask of a refused
// request comes back at once and the result is not touched.
template <typename Ask>
int32_t request(const int32_t* motion_code, const int32_t* force_code, const int32_t* output_type,
                const int32_t* output_subtype, int32_t* node, int32_t* element, int32_t* position,
                const int32_t* num_time_steps, const int32_t* step, const char* label, int64_t label_length,
                Ask ask) {
  tmrdar::request_checks::Request checked{.motion_code = value_at(motion_code),
                                        .force_code = value_at(force_code),
                                        .output_type = value_at(output_type),
                                        .output_subtype = value_at(output_subtype),
                                        .node = value_at(node),
                                        .element = value_at(element),
                                        .position = value_at(position),
                                        .num_time_steps = value_at(num_time_steps),
                                        .step = value_at(step)};
  int32_t mask = 0;
  tmrdar::request_checks::perform_arg_checks(checked, string(label, label_length), mask);
  if (node != nullptr) *node = checked.node;
  if (element != nullptr) *element = checked.element;
  if (position != nullptr) *position = checked.position;
  if (mask > 0) return mask;
  tmrdar::header::FormatReader* db = module_name(motion_code, force_code);
  if (db == nullptr) return mask + tmrdar::request_checks::no_version;
  const tmrdar::results::RequestArguments request{.output_type = checked.output_type,
                                                   .parameter = checked.output_subtype,
                                                   .node = checked.node,
                                                   .element = checked.element,
                                                   .location = checked.position};
  ask(*db, request, mask);
  return mask;
}

}  // namespace

extern "C" {

int32_t TMRDAR_CALL DllMain(void* /*module*/, uint32_t reason, void* /*reserved*/) {
  return guarded(1, [&] { return tmrdar::frame::load_notification(reason); });
}

int32_t TMRDAR_CALL XIT(void) {
  return guarded(0, [] { return tmrdar::frame::close_job(); });
}

int32_t TMRDAR_CALL GetDatabaseInfo(int32_t* motion_code, int32_t* force_code, int32_t motion_words[5], int32_t force_words[5],
                        const int32_t* n, int32_t* dimensions, const char* path, int64_t path_length) {
  return guarded(-3, [&] {
    int32_t motion = -1;
    int32_t force = -1;
    std::array<int32_t, 5> motion_record{};
    std::array<int32_t, 5> force_record{};
    const int32_t count = value_at(n);
    const int32_t result = tmrdar::frame::database_info(motion, force, motion_record, force_record, count,
                                                        array(dimensions, count), string(path, path_length));
    if (motion_code != nullptr) *motion_code = motion;
    if (force_code != nullptr) *force_code = force;
    if (motion_words != nullptr) std::copy(motion_record.begin(), motion_record.end(), motion_words);
    if (force_words != nullptr) std::copy(force_record.begin(), force_record.end(), force_words);
    return result;
  });
}

int32_t TMRDAR_CALL GetAnalysisDetails(int32_t* detail_1, int32_t* detail_2, float* detail_3, char* title,
                           int64_t title_capacity) {
  return guarded(0, [&] {
    int32_t d1 = 0;
    int32_t d2 = 0;
    float d3 = 0.0F;
    const int32_t result = tmrdar::frame::analysis_details(d1, d2, d3, array(title, title_capacity));
    if (detail_1 != nullptr) *detail_1 = d1;
    if (detail_2 != nullptr) *detail_2 = d2;
    if (detail_3 != nullptr) *detail_3 = d3;
    // Without a string there is no room for any title.
    if (title == nullptr && title_capacity > 0) return std::max(result, 0);
    return result;
  });
}

// The four model queries answer from the tables that the open read, through
// the model queries library; what stays here is each export's own order of
// argument tests and its own result codes.

int32_t TMRDAR_CALL GetNodeProperties(const int32_t* motion_code, const int32_t* force_code, const int32_t* node,
                          const int32_t* kind, float* coordinates) {
  return guarded(0, [&] {
    const int32_t k = value_at(kind);
    if (k != 0 && k != 1) return -2;
    const tmrdar::header::FormatReader* db = module_name(motion_code, force_code);
    if (db == nullptr) return -1;
    return tmrdar::model_queries::node_properties(*db, value_at(node), k, array(coordinates, 3));
  });
}

int32_t TMRDAR_CALL GetElementProperties(const int32_t* motion_code, const int32_t* force_code, const int32_t* element,
                             const int32_t* kind, const int32_t* length, int32_t* integers, float* reals) {
  return guarded(-1, [&] {
    const int32_t k = value_at(kind);
    if (k != 0 && k != 1) return -3;
    // The arrays are marked before the version is looked at.
    const int32_t n = value_at(length);
    const std::span<int32_t> ints = array(integers, n);
    const std::span<float> floats = array(reals, n);
    std::fill(ints.begin(), ints.end(), tmrdar::model_queries::no_integer);
    std::fill(floats.begin(), floats.end(), tmrdar::model_queries::no_real);
    const tmrdar::header::FormatReader* db = module_name(motion_code, force_code);
    if (db == nullptr) return -2;
    return tmrdar::model_queries::element_properties(*db, value_at(element), k, n, ints, floats);
  });
}

int32_t TMRDAR_CALL GetDistanceAlongRiser(const int32_t* motion_code, const int32_t* force_code, const int32_t* element,
                              const int32_t* position, float* distance) {
  return guarded(-1, [&] {
    const int32_t p = value_at(position);
    if (p < 1 || p > 3) return -2;
    float answer = 0.0F;
    int32_t result = -3;
    if (const tmrdar::header::FormatReader* db = module_name(motion_code, force_code)) {
      result = tmrdar::model_queries::distance_along_riser(*db, value_at(element), p, answer);
    }
    if (distance != nullptr) *distance = answer;
    return result;
  });
}

int32_t TMRDAR_CALL GetRequestedSingleValue(const int32_t* motion_code, const int32_t* force_code, const int32_t* output_type,
                                const int32_t* output_subtype, int32_t* node, int32_t* element, int32_t* position,
                                const int32_t* num_time_steps, const int32_t* step, float* value, const char* label,
                                int64_t label_length) {
  return guarded(tmrdar::request_checks::read_failed, [&] {
    return request(motion_code, force_code, output_type, output_subtype, node, element, position, num_time_steps,
                   step, label, label_length, [&](tmrdar::header::FormatReader& db,
                                                  const tmrdar::results::RequestArguments& request, int32_t& status) {
                     float result = 0.0F;
                     tmrdar::results::getrequestedsinglevalue(db, request, value_at(step), result, status);
                     if (value != nullptr) *value = result;
                   });
  });
}

int32_t TMRDAR_CALL GetRequestedHistory(const int32_t* motion_code, const int32_t* force_code, const int32_t* output_type,
                            const int32_t* output_subtype, int32_t* node, int32_t* element, int32_t* position,
                            const int32_t* num_time_steps, const int32_t* count, float* values, const char* label,
                            int64_t label_length) {
  return guarded(tmrdar::request_checks::read_failed, [&] {
    return request(motion_code, force_code, output_type, output_subtype, node, element, position, num_time_steps,
                   count, label, label_length, [&](tmrdar::header::FormatReader& db,
                                                   const tmrdar::results::RequestArguments& request, int32_t& status) {
                     // A null array with steps to fill has nowhere to put them:
                     // the request then reads nothing.
                     const int32_t n = value_at(count);
                     if (values == nullptr && n > 0) return;
                     tmrdar::results::getrequestedhistory(db, request, array(values, n), status);
                   });
  });
}

int32_t TMRDAR_CALL GetRequestedHistoryError(const int32_t* mask, const int32_t* length, int32_t* flags) {
  return guarded(-1, [&] {
    // A null array is room for nothing, whatever length comes with it.
    const std::span<int32_t> out = array(flags, value_at(length));
    const auto n = static_cast<int32_t>(out.size());
    std::fill(out.begin(), out.end(), 0);
    const int32_t m = value_at(mask);
    if (m < 0) return -1;
    if (m == 0) return 0;
    // The bit count is formed in single precision from the correctly rounded
    // single logarithm, as the mask's users expect: for the masks 8192 and
    // 32768 it comes out one short.
    const float bits = static_cast<float>(std::log(static_cast<double>(m))) / 0.6931472F;
    const int32_t b = static_cast<int32_t>(bits) + 1;
    if (b > n) return b;
    for (int32_t i = 1; i <= b; ++i) out[static_cast<std::size_t>(i - 1)] = (i <= 32 && ((m >> (i - 1)) & 1) != 0) ? 1 : 0;
    return 0;
  });
}

int32_t TMRDAR_CALL GetRequestedSingleValueError(const int32_t* mask, const int32_t* length, int32_t* flags) {
  return GetRequestedHistoryError(mask, length, flags);
}

int32_t TMRDAR_CALL GetProcessedDirectStressStrainData(const int32_t* motion_code, const int32_t* force_code,
                                           const int32_t* table_id, const int32_t* capacity, float* pairs) {
  return guarded(-1, [&] {
    const tmrdar::header::FormatReader* db = module_name(motion_code, force_code);
    if (db == nullptr) return -1;
    const int32_t room = value_at(capacity);
    int32_t status = 0;
    tmrdar::model_queries::v861_getnonlinearmaterial(*db, value_at(table_id), room, array(pairs, 2 * int64_t{room}),
                                                     status);
    return status;
  });
}

}  // extern "C"
