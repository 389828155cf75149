// tmrdar nodes, elements and curve: the model tables of a job.
#include <cstdio>
#include <string>
#include <vector>

#include "tools/cli/commands.h"
#include "tools/cli/job_access.h"
#include "tools/cli/table.h"

namespace tmrdar::cli {
namespace {

constexpr int32_t default_max_number = 1000000;

const char* kind_name(int32_t kind) { return kind == tmrdar::kind::auxiliary ? "auxiliary" : "structure"; }

int32_t asked_max_number(const Arguments& arguments) {
  const std::optional<std::string> text = arguments.value("--max-number");
  if (!text) return default_max_number;
  const int32_t value = whole_number(*text, "--max-number");
  if (value < 1) throw UsageError("--max-number must be 1 or more, not " + *text);
  return value;
}

// Rows that a list could not name are told on standard error, so that a
// short table is never taken for the whole model.
void tell_unlisted(int32_t rows, const char* what, int32_t max_number) {
  if (rows <= 0) return;
  std::fprintf(stderr,
               "tmrdar: warning: %d %s not listed: their numbers are above %d or repeat an earlier row's number "
               "(see --max-number)\n",
               rows, what, max_number);
}

std::string number_or_none(int32_t number) { return number == -1 ? std::string() : whole(number); }

}  // namespace

int nodes(const Arguments& arguments) {
  const int32_t max_number = asked_max_number(arguments);
  check_positional(arguments, {"JOB"}, 1);
  const tmrdar::job job = open_job(arguments);
  Table table;
  table.column("kind", Table::Align::left);
  for (const char* name : {"node", "row", "x", "y", "z"}) table.column(name);
  for (const int32_t kind : {tmrdar::kind::structure, tmrdar::kind::auxiliary}) {
    const tmrdar::node_list list = job.list_nodes(kind, max_number);
    for (const tmrdar::node_properties& node : list.nodes) {
      table.row({kind_name(kind), whole(node.number), whole(node.row), real(node.coordinates[0]),
                 real(node.coordinates[1]), real(node.coordinates[2])});
    }
    tell_unlisted(list.unlisted_rows, kind == tmrdar::kind::auxiliary ? "auxiliary node rows" : "node rows",
                  max_number);
  }
  table.print(stdout, arguments.has(csv_option.name));
  return 0;
}

int elements(const Arguments& arguments) {
  const int32_t max_number = asked_max_number(arguments);
  const bool all = arguments.has("--all");
  check_positional(arguments, {"JOB"}, 1);
  const tmrdar::job job = open_job(arguments);
  Table table;
  table.column("kind", Table::Align::left);
  for (const char* name : {"element", "row", "node-1", "node-2", "length", "start", "end"}) table.column(name);
  if (all) {
    for (const char* name : {"a8", "b5", "section-2", "section-4", "fluid-1", "fluid-2", "fluid-3", "b1", "b2", "b3",
                             "b4", "section-3", "a6", "a7", "b6", "b7", "b8", "c1"}) {
      table.column(name);
    }
  }
  for (const int32_t kind : {tmrdar::kind::structure, tmrdar::kind::auxiliary}) {
    const tmrdar::element_list list = job.list_elements(kind, max_number);
    for (const tmrdar::element_properties& e : list.elements) {
      const bool structure = kind == tmrdar::kind::structure;
      std::vector<std::string> cells{kind_name(kind), whole(e.number), whole(e.row), number_or_none(e.nodes[0]),
                                     number_or_none(e.nodes[1])};
      if (structure) {
        cells.push_back(real(e.length));
        cells.push_back(real(job.distance(e.number, tmrdar::position::start)));
        cells.push_back(real(job.distance(e.number, tmrdar::position::end)));
      } else {
        cells.insert(cells.end(), 3, std::string());
      }
      if (all) {
        cells.push_back(whole(e.a8));
        if (structure) {
          for (const int32_t value : {e.b5, e.section_2, e.section_4}) cells.push_back(whole(value));
          for (const float value : e.external_fluid) cells.push_back(real(value));
          for (const float value : e.b1_to_b4) cells.push_back(real(value));
          for (const float value : {e.section_3, e.a6, e.a7}) cells.push_back(real(value));
          for (const float value : e.b6_to_b8) cells.push_back(real(value));
          cells.push_back(real(e.c1));
        } else {
          cells.insert(cells.end(), 17, std::string());
        }
      }
      table.row(std::move(cells));
    }
    tell_unlisted(list.unlisted_rows, kind == tmrdar::kind::auxiliary ? "auxiliary element rows" : "element rows",
                  max_number);
  }
  table.print(stdout, arguments.has(csv_option.name));
  return 0;
}

int curve(const Arguments& arguments) {
  check_positional(arguments, {"JOB", "curve ID"}, 2);
  const std::string& id_text = arguments.positional()[1];
  const int32_t id = whole_number(id_text, "the curve ID");
  const tmrdar::job job = open_job(arguments);
  const std::vector<tmrdar::curve_point> points = job.curve(id);
  if (points.empty()) throw tmrdar::error("stress-strain curve " + id_text + " holds no points", 0);
  Table table;
  for (const char* name : {"point", "first", "second"}) table.column(name);
  for (std::size_t i = 0; i < points.size(); ++i) {
    table.row({whole(static_cast<int64_t>(i) + 1), real(points[i].first), real(points[i].second)});
  }
  table.print(stdout, arguments.has(csv_option.name));
  return 0;
}

}  // namespace tmrdar::cli
