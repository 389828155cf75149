// tmrdar nodes, elements and curve: the model tables of a job.
#include <cstdio>
#include <string>
#include <vector>

#include "tools/cli/commands.h"
#include "tools/cli/job_access.h"
#include "tools/cli/table.h"

namespace tmrdar::cli {
namespace {

constexpr int32_t DEFAULT_MAX_NUMBER = 1000000;

const char* KIND_NAME(int32_t kind) { return kind == tmrdar::KIND::AUXILIARY ? "auxiliary" : "structure"; }

int32_t MAX_NUMBER(const ARGUMENTS& arguments) {
  const std::optional<std::string> text = arguments.VALUE("--max-number");
  if (!text) return DEFAULT_MAX_NUMBER;
  const int32_t value = WHOLE_NUMBER(*text, "--max-number");
  if (value < 1) throw USAGE_ERROR("--max-number must be 1 or more, not " + *text);
  return value;
}

// Rows that a list could not name are told on standard error, so that a
// short table is never taken for the whole model.
void TELL_UNLISTED(int32_t rows, const char* what, int32_t max_number) {
  if (rows <= 0) return;
  std::fprintf(stderr,
               "tmrdar: warning: %d %s not listed: their numbers are above %d or repeat an earlier row's number "
               "(see --max-number)\n",
               rows, what, max_number);
}

std::string NUMBER_OR_NONE(int32_t number) { return number == -1 ? std::string() : WHOLE(number); }

}  // namespace

int NODES(const ARGUMENTS& arguments) {
  const int32_t max_number = MAX_NUMBER(arguments);
  CHECK_POSITIONAL(arguments, {"JOB"}, 1);
  const tmrdar::JOB job = OPEN_JOB(arguments);
  TABLE table;
  table.COLUMN("kind", TABLE::ALIGN::LEFT);
  for (const char* name : {"node", "row", "x", "y", "z"}) table.COLUMN(name);
  for (const int32_t kind : {tmrdar::KIND::STRUCTURE, tmrdar::KIND::AUXILIARY}) {
    const tmrdar::NODE_LIST list = job.LIST_NODES(kind, max_number);
    for (const tmrdar::NODE_PROPERTIES& node : list.NODES) {
      table.ROW({KIND_NAME(kind), WHOLE(node.NUMBER), WHOLE(node.ROW), REAL(node.COORDINATES[0]),
                 REAL(node.COORDINATES[1]), REAL(node.COORDINATES[2])});
    }
    TELL_UNLISTED(list.UNLISTED_ROWS, kind == tmrdar::KIND::AUXILIARY ? "auxiliary node rows" : "node rows",
                  max_number);
  }
  table.PRINT(stdout, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

int ELEMENTS(const ARGUMENTS& arguments) {
  const int32_t max_number = MAX_NUMBER(arguments);
  const bool all = arguments.HAS("--all");
  CHECK_POSITIONAL(arguments, {"JOB"}, 1);
  const tmrdar::JOB job = OPEN_JOB(arguments);
  TABLE table;
  table.COLUMN("kind", TABLE::ALIGN::LEFT);
  for (const char* name : {"element", "row", "node-1", "node-2", "length", "start", "end"}) table.COLUMN(name);
  if (all) {
    for (const char* name : {"a8", "b5", "section-2", "section-4", "fluid-1", "fluid-2", "fluid-3", "b1", "b2", "b3",
                             "b4", "section-3", "a6", "a7", "b6", "b7", "b8", "c1"}) {
      table.COLUMN(name);
    }
  }
  for (const int32_t kind : {tmrdar::KIND::STRUCTURE, tmrdar::KIND::AUXILIARY}) {
    const tmrdar::ELEMENT_LIST list = job.LIST_ELEMENTS(kind, max_number);
    for (const tmrdar::ELEMENT_PROPERTIES& e : list.ELEMENTS) {
      const bool structure = kind == tmrdar::KIND::STRUCTURE;
      std::vector<std::string> cells{KIND_NAME(kind), WHOLE(e.NUMBER), WHOLE(e.ROW), NUMBER_OR_NONE(e.NODES[0]),
                                     NUMBER_OR_NONE(e.NODES[1])};
      if (structure) {
        cells.push_back(REAL(e.LENGTH));
        cells.push_back(REAL(job.DISTANCE(e.NUMBER, tmrdar::POSITION::START)));
        cells.push_back(REAL(job.DISTANCE(e.NUMBER, tmrdar::POSITION::END)));
      } else {
        cells.insert(cells.end(), 3, std::string());
      }
      if (all) {
        cells.push_back(WHOLE(e.A8));
        if (structure) {
          for (const int32_t value : {e.B5, e.SECTION_2, e.SECTION_4}) cells.push_back(WHOLE(value));
          for (const float value : e.EXTERNAL_FLUID) cells.push_back(REAL(value));
          for (const float value : e.B1_TO_B4) cells.push_back(REAL(value));
          for (const float value : {e.SECTION_3, e.A6, e.A7}) cells.push_back(REAL(value));
          for (const float value : e.B6_TO_B8) cells.push_back(REAL(value));
          cells.push_back(REAL(e.C1));
        } else {
          cells.insert(cells.end(), 17, std::string());
        }
      }
      table.ROW(std::move(cells));
    }
    TELL_UNLISTED(list.UNLISTED_ROWS, kind == tmrdar::KIND::AUXILIARY ? "auxiliary element rows" : "element rows",
                  max_number);
  }
  table.PRINT(stdout, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

int CURVE(const ARGUMENTS& arguments) {
  CHECK_POSITIONAL(arguments, {"JOB", "curve ID"}, 2);
  const std::string& id_text = arguments.POSITIONAL()[1];
  const int32_t id = WHOLE_NUMBER(id_text, "the curve ID");
  const tmrdar::JOB job = OPEN_JOB(arguments);
  const std::vector<tmrdar::CURVE_POINT> points = job.CURVE(id);
  if (points.empty()) throw tmrdar::FAILURE("stress-strain curve " + id_text + " holds no points", 0);
  TABLE table;
  for (const char* name : {"point", "first", "second"}) table.COLUMN(name);
  for (std::size_t i = 0; i < points.size(); ++i) {
    table.ROW({WHOLE(static_cast<int64_t>(i) + 1), REAL(points[i].FIRST), REAL(points[i].SECOND)});
  }
  table.PRINT(stdout, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

}  // namespace tmrdar::cli
