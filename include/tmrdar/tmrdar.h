/*
 * tmrdar: read-only access to the motion (.dbm) and force (.dbf) result
 * databases of a riser or pipeline analysis.
 *
 * Conventions of every export:
 *  - every number is passed by address, also the pure inputs; integers are
 *    32-bit signed, reals 32-bit IEEE;
 *  - a string is a pointer to characters with no terminator, blank padded on
 *    the right; its length is a 64-bit integer passed by value after all the
 *    other arguments;
 *  - the result is a 32-bit status; no export ends the process or throws;
 *  - the queries take the two database version codes first, as
 *    GetDatabaseInfo gave them (motion code, then force code);
 *  - one job is open at a time, in process-wide state. Calls are serialised
 *    by a lock inside the library.
 */
#ifndef TMRDAR_TMRDAR_H
#define TMRDAR_TMRDAR_H

#include <stdint.h>

/* TMRDAR_API marks the exports. On Windows the DLL's module definition file
 * names them, so the declarations need no mark there. TMRDAR_CALL is the
 * calling convention of every export: on x86-64 Windows the platform has one
 * convention, which this names (__stdcall, that of DllMain and of
 * spreadsheet macros, is the same as any other there); elsewhere the C
 * convention of the platform. */
#if defined(_WIN32)
#define TMRDAR_API
#define TMRDAR_CALL __stdcall
#else
#define TMRDAR_API __attribute__((visibility("default")))
#define TMRDAR_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Load and unload notification: reason 1 clears the library's version codes,
 * reason 0 calls XIT. Called by the loader; returns 1. */
TMRDAR_API int32_t TMRDAR_CALL DllMain(void* module, uint32_t reason, void* reserved);

/* Closes the job's files and releases its tables. 0, or 1 / 2 / 3 when closing
 * the motion / force / both files failed. */
TMRDAR_API int32_t TMRDAR_CALL XIT(void);

/* Opens the job at `path` (any extension, or none, selects <stem>.dbm and
 * <stem>.dbf). Gives the version code of each file (0: missing, -1:
 * unreadable), words 4 to 8 of each file's first record, and the 14 model
 * dimensions in `dimensions` (length *n). 0 on success; -1 blank path; -3 no
 * usable database; 14 when *n is below 14. */
TMRDAR_API int32_t TMRDAR_CALL GetDatabaseInfo(int32_t* motion_code, int32_t* force_code, int32_t motion_words[5],
                                   int32_t force_words[5], const int32_t* n, int32_t* dimensions,
                                   const char* path, int64_t path_length);

/* The analysis values and title of the last opened job. 0 when the title was
 * copied (blank padded to `title_capacity`), or the title's length when it is
 * longer than the capacity (the string is then untouched). */
TMRDAR_API int32_t TMRDAR_CALL GetAnalysisDetails(int32_t* detail_1, int32_t* detail_2, float* detail_3, char* title,
                                      int64_t title_capacity);

/* Coordinates of node `node` (kind 0 main node, 1 auxiliary node). The node's
 * position in its table (from 1); 0 no such node; -1 no version; -2 bad kind. */
TMRDAR_API int32_t TMRDAR_CALL GetNodeProperties(const int32_t* motion_code, const int32_t* force_code, const int32_t* node,
                                     const int32_t* kind, float coordinates[3]);

/* Properties of element `element` (kind 0 main, 1 auxiliary) into two arrays of
 * length *length. 0 filled; 15 or 4 the length required; -1 no such element;
 * -2 no version; -3 bad kind. */
TMRDAR_API int32_t TMRDAR_CALL GetElementProperties(const int32_t* motion_code, const int32_t* force_code,
                                        const int32_t* element, const int32_t* kind, const int32_t* length,
                                        int32_t* integers, float* reals);

/* Distance along the riser of position 1, 2 or 3 of element `element`.
 * 0 written; -1 no such element; -2 bad position; -3 no version. */
TMRDAR_API int32_t TMRDAR_CALL GetDistanceAlongRiser(const int32_t* motion_code, const int32_t* force_code,
                                         const int32_t* element, const int32_t* position, float* distance);

/* One result at time step *step. Node, element and position are also outputs
 * when a label is resolved. 0 written, or a mask of error bits whose bit k
 * names argument k (decode with GetRequestedSingleValueError). */
TMRDAR_API int32_t TMRDAR_CALL GetRequestedSingleValue(const int32_t* motion_code, const int32_t* force_code,
                                           const int32_t* output_type, const int32_t* output_subtype,
                                           int32_t* node, int32_t* element, int32_t* position,
                                           const int32_t* num_time_steps, const int32_t* step, float* value,
                                           const char* label, int64_t label_length);

/* The history of one result over steps 1 to *count into `values`. Results as
 * for GetRequestedSingleValue. */
TMRDAR_API int32_t TMRDAR_CALL GetRequestedHistory(const int32_t* motion_code, const int32_t* force_code,
                                       const int32_t* output_type, const int32_t* output_subtype, int32_t* node,
                                       int32_t* element, int32_t* position, const int32_t* num_time_steps,
                                       const int32_t* count, float* values, const char* label,
                                       int64_t label_length);

/* Decodes an error mask into *length flags, one for each argument. */
TMRDAR_API int32_t TMRDAR_CALL GetRequestedSingleValueError(const int32_t* mask, const int32_t* length, int32_t* flags);
TMRDAR_API int32_t TMRDAR_CALL GetRequestedHistoryError(const int32_t* mask, const int32_t* length, int32_t* flags);

/* The pairs of stress-strain table `table_id` into `pairs` (room for *capacity
 * pairs). 0 written; the pair count when it exceeds the capacity; -table_id
 * when there is no such table; -1 no version. */
TMRDAR_API int32_t TMRDAR_CALL GetProcessedDirectStressStrainData(const int32_t* motion_code, const int32_t* force_code,
                                                      const int32_t* table_id, const int32_t* capacity,
                                                      float* pairs);

#ifdef __cplusplus
}
#endif

#endif /* TMRDAR_TMRDAR_H */
