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

using tmrdar::frame::LIBRARY_LOCK;

// Runs the body under the library lock. Nothing may leave an export as an
// exception; should the body throw all the same (memory exhausted), the
// export answers `fallback`.
template <typename BODY>
int32_t GUARDED(int32_t fallback, BODY body) noexcept {
  try {
    const std::lock_guard<std::mutex> hold(LIBRARY_LOCK());
    // A file that another program changed since the last export is seen at
    // its new size from here on.
    tmrdar::MOD_FILE::REFRESH_OPEN_FILES();
    return body();
  } catch (...) {
    return fallback;
  }
}

int32_t VALUE(const int32_t* p) { return p != nullptr ? *p : 0; }

std::string_view STRING(const char* text, int64_t length) {
  return text != nullptr && length > 0 ? std::string_view(text, static_cast<std::size_t>(length))
                                       : std::string_view();
}

template <typename T>
std::span<T> ARRAY(T* items, int64_t length) {
  return items != nullptr && length > 0 ? std::span<T>(items, static_cast<std::size_t>(length)) : std::span<T>();
}

tmrdar::header::TIDE3_DATABASE_FILES* MODULE(const int32_t* motion_code, const int32_t* force_code) {
  return tmrdar::frame::SELECTED_MODULE(VALUE(motion_code), VALUE(force_code));
}

// The road of a request: the frame's checks of its arguments (a label the
// request names its item by gives the node or element, and the kind in place
// of the position), then the selected format's reader. The mask of a refused
// request comes back at once and the result is not touched.
template <typename ASK>
int32_t REQUEST(const int32_t* motion_code, const int32_t* force_code, const int32_t* output_type,
                const int32_t* output_subtype, int32_t* node, int32_t* element, int32_t* position,
                const int32_t* num_time_steps, const int32_t* step, const char* label, int64_t label_length,
                ASK ask) {
  tmrdar::REVISION_IDS::REQUEST checked{.MOTION_CODE = VALUE(motion_code),
                                        .FORCE_CODE = VALUE(force_code),
                                        .OUTPUT_TYPE = VALUE(output_type),
                                        .OUTPUT_SUBTYPE = VALUE(output_subtype),
                                        .NODE = VALUE(node),
                                        .ELEMENT = VALUE(element),
                                        .POSITION = VALUE(position),
                                        .NUM_TIME_STEPS = VALUE(num_time_steps),
                                        .STEP = VALUE(step)};
  int32_t mask = 0;
  tmrdar::REVISION_IDS::PERFORM_ARG_CHECKS(checked, STRING(label, label_length), mask);
  if (node != nullptr) *node = checked.NODE;
  if (element != nullptr) *element = checked.ELEMENT;
  if (position != nullptr) *position = checked.POSITION;
  if (mask > 0) return mask;
  tmrdar::header::TIDE3_DATABASE_FILES* db = MODULE(motion_code, force_code);
  if (db == nullptr) return mask + tmrdar::REVISION_IDS::NO_VERSION;
  const tmrdar::results::REQUEST_ARGUMENTS request{.OUTPUT_TYPE = checked.OUTPUT_TYPE,
                                                   .PARAMETER = checked.OUTPUT_SUBTYPE,
                                                   .NODE = checked.NODE,
                                                   .ELEMENT = checked.ELEMENT,
                                                   .LOCATION = checked.POSITION};
  ask(*db, request, mask);
  return mask;
}

}  // namespace

extern "C" {

int32_t DllMain(void* /*module*/, uint32_t reason, void* /*reserved*/) {
  return GUARDED(1, [&] { return tmrdar::frame::LOAD_NOTIFICATION(reason); });
}

int32_t XIT(void) {
  return GUARDED(0, [] { return tmrdar::frame::CLOSE_JOB(); });
}

int32_t GetDatabaseInfo(int32_t* motion_code, int32_t* force_code, int32_t motion_words[5], int32_t force_words[5],
                        const int32_t* n, int32_t* dimensions, const char* path, int64_t path_length) {
  return GUARDED(-3, [&] {
    int32_t motion = -1;
    int32_t force = -1;
    std::array<int32_t, 5> motion_record{};
    std::array<int32_t, 5> force_record{};
    const int32_t count = VALUE(n);
    const int32_t result = tmrdar::frame::DATABASE_INFO(motion, force, motion_record, force_record, count,
                                                        ARRAY(dimensions, count), STRING(path, path_length));
    if (motion_code != nullptr) *motion_code = motion;
    if (force_code != nullptr) *force_code = force;
    if (motion_words != nullptr) std::copy(motion_record.begin(), motion_record.end(), motion_words);
    if (force_words != nullptr) std::copy(force_record.begin(), force_record.end(), force_words);
    return result;
  });
}

int32_t GetAnalysisDetails(int32_t* detail_1, int32_t* detail_2, float* detail_3, char* title,
                           int64_t title_capacity) {
  return GUARDED(0, [&] {
    int32_t d1 = 0;
    int32_t d2 = 0;
    float d3 = 0.0F;
    const int32_t result = tmrdar::frame::ANALYSIS_DETAILS(d1, d2, d3, ARRAY(title, title_capacity));
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

int32_t GetNodeProperties(const int32_t* motion_code, const int32_t* force_code, const int32_t* node,
                          const int32_t* kind, float* coordinates) {
  return GUARDED(0, [&] {
    const int32_t k = VALUE(kind);
    if (k != 0 && k != 1) return -2;
    const tmrdar::header::TIDE3_DATABASE_FILES* db = MODULE(motion_code, force_code);
    if (db == nullptr) return -1;
    return tmrdar::model_queries::NODE_PROPERTIES(*db, VALUE(node), k, ARRAY(coordinates, 3));
  });
}

int32_t GetElementProperties(const int32_t* motion_code, const int32_t* force_code, const int32_t* element,
                             const int32_t* kind, const int32_t* length, int32_t* integers, float* reals) {
  return GUARDED(-1, [&] {
    const int32_t k = VALUE(kind);
    if (k != 0 && k != 1) return -3;
    // The arrays are marked before the version is looked at.
    const int32_t n = VALUE(length);
    const std::span<int32_t> ints = ARRAY(integers, n);
    const std::span<float> floats = ARRAY(reals, n);
    std::fill(ints.begin(), ints.end(), tmrdar::model_queries::NO_INTEGER);
    std::fill(floats.begin(), floats.end(), tmrdar::model_queries::NO_REAL);
    const tmrdar::header::TIDE3_DATABASE_FILES* db = MODULE(motion_code, force_code);
    if (db == nullptr) return -2;
    return tmrdar::model_queries::ELEMENT_PROPERTIES(*db, VALUE(element), k, n, ints, floats);
  });
}

int32_t GetDistanceAlongRiser(const int32_t* motion_code, const int32_t* force_code, const int32_t* element,
                              const int32_t* position, float* distance) {
  return GUARDED(-1, [&] {
    const int32_t p = VALUE(position);
    if (p < 1 || p > 3) return -2;
    float answer = 0.0F;
    int32_t result = -3;
    if (const tmrdar::header::TIDE3_DATABASE_FILES* db = MODULE(motion_code, force_code)) {
      result = tmrdar::model_queries::DISTANCE_ALONG_RISER(*db, VALUE(element), p, answer);
    }
    if (distance != nullptr) *distance = answer;
    return result;
  });
}

int32_t GetRequestedSingleValue(const int32_t* motion_code, const int32_t* force_code, const int32_t* output_type,
                                const int32_t* output_subtype, int32_t* node, int32_t* element, int32_t* position,
                                const int32_t* num_time_steps, const int32_t* step, float* value, const char* label,
                                int64_t label_length) {
  return GUARDED(tmrdar::REVISION_IDS::READ_FAILED, [&] {
    return REQUEST(motion_code, force_code, output_type, output_subtype, node, element, position, num_time_steps,
                   step, label, label_length, [&](tmrdar::header::TIDE3_DATABASE_FILES& db,
                                                  const tmrdar::results::REQUEST_ARGUMENTS& request, int32_t& status) {
                     float result = 0.0F;
                     tmrdar::results::GETREQUESTEDSINGLEVALUE(db, request, VALUE(step), result, status);
                     if (value != nullptr) *value = result;
                   });
  });
}

int32_t GetRequestedHistory(const int32_t* motion_code, const int32_t* force_code, const int32_t* output_type,
                            const int32_t* output_subtype, int32_t* node, int32_t* element, int32_t* position,
                            const int32_t* num_time_steps, const int32_t* count, float* values, const char* label,
                            int64_t label_length) {
  return GUARDED(tmrdar::REVISION_IDS::READ_FAILED, [&] {
    return REQUEST(motion_code, force_code, output_type, output_subtype, node, element, position, num_time_steps,
                   count, label, label_length, [&](tmrdar::header::TIDE3_DATABASE_FILES& db,
                                                   const tmrdar::results::REQUEST_ARGUMENTS& request, int32_t& status) {
                     // A null array with steps to fill has nowhere to put them:
                     // the request then reads nothing.
                     const int32_t n = VALUE(count);
                     if (values == nullptr && n > 0) return;
                     tmrdar::results::GETREQUESTEDHISTORY(db, request, ARRAY(values, n), status);
                   });
  });
}

int32_t GetRequestedHistoryError(const int32_t* mask, const int32_t* length, int32_t* flags) {
  return GUARDED(-1, [&] {
    const int32_t n = VALUE(length);
    const std::span<int32_t> out = ARRAY(flags, n);
    std::fill(out.begin(), out.end(), 0);
    const int32_t m = VALUE(mask);
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

int32_t GetRequestedSingleValueError(const int32_t* mask, const int32_t* length, int32_t* flags) {
  return GetRequestedHistoryError(mask, length, flags);
}

int32_t GetProcessedDirectStressStrainData(const int32_t* motion_code, const int32_t* force_code,
                                           const int32_t* table_id, const int32_t* capacity, float* pairs) {
  return GUARDED(-1, [&] {
    const tmrdar::header::TIDE3_DATABASE_FILES* db = MODULE(motion_code, force_code);
    if (db == nullptr) return -1;
    const int32_t room = VALUE(capacity);
    int32_t status = 0;
    tmrdar::model_queries::V861_GETNONLINEARMATERIAL(*db, VALUE(table_id), room, ARRAY(pairs, 2 * int64_t{room}),
                                                     status);
    return status;
  });
}

}  // extern "C"
