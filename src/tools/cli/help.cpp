// The help texts of the tool and the table of its commands.
#include <array>

#include "tools/cli/commands.h"

namespace tmrdar::cli {
namespace {

// The output types, the subtypes each takes and the item each belongs to.
#define TMRDAR_CLI_REQUEST_HELP                                                                           \
  "TYPE is an output type by number or name, SUBTYPE a number or the name given here:\n"                  \
  "   1 time                     time of the step\n"                                                      \
  "   2 step-word-3              third word of the step record\n"                                         \
  "   3 surface-elevation        water surface elevation\n"                                               \
  "   4 step-word-5              fifth word of the step record\n"                                         \
  "   5 displacement             --node; SUBTYPE 1-6 a component, 7 (resultant) that of components 4-6\n" \
  "   6 velocity                 --node; SUBTYPE as for displacement\n"                                   \
  "   7 acceleration             --node; SUBTYPE as for displacement\n"                                   \
  "   8 guide-surface            --entry; SUBTYPE word 1-9 of the guide surface's entry\n"                \
  "   9 zero-gap-guide           --entry; SUBTYPE word 1-6 of the guide's entry\n"                        \
  "  10 node-contact             --node; SUBTYPE word 1-7 of the node's contact entry\n"                  \
  "  11 clashing                 --entry (clash pair); SUBTYPE 1 the motion word, 2-3 the force words\n"  \
  "  12 aux-node                 --node (auxiliary node); SUBTYPE word 1-3\n"                             \
  "  13 reaction                 --node with a boundary condition; SUBTYPE as for displacement\n"         \
  "  14 guide-surface-reaction   --entry; SUBTYPE 1-3 a component, 4 (magnitude)\n"                       \
  "  15 zero-gap-guide-reaction  --entry; SUBTYPE as for guide-surface-reaction\n"                        \
  "  16 pipe-in-pipe-reaction    --entry; SUBTYPE as for guide-surface-reaction\n"                        \
  "  17 element-force            --element, --position; SUBTYPE 1-7 element section 1-7,\n"               \
  "                              8 resultant of sections 5 and 6, 9 resultant of sections 8 and 9,\n"     \
  "                              10 unused (always 0), 11-13 sections 8-10, 14 (temperature)\n"           \
  "  18 element-pressure         --element, --position; SUBTYPE 1 or 2, the first or second pressure\n"   \
  "\n"                                                                                                    \
  "The item:\n"                                                                                           \
  "  --node N        a node number (--entry N is the same option: the number from 1 of a guide\n"         \
  "                  surface, zero gap guide, clash pair or pipe-in-pipe connection)\n"                   \
  "  --element E     an element number of the structure\n"                                               \
  "  --position P    1 the start, 2 the middle, 3 the end of the element (default 1)\n"                   \
  "  --label TEXT    a node or element label of the job in place of the number; an element's\n"           \
  "                  label also gives the position\n"                                                     \
  "  --csv           comma-separated values\n"

constexpr std::array<Option, 2> plain_options{help_option, csv_option};
constexpr std::array<Option, 3> node_options{help_option, csv_option, Option{"--max-number", true}};
constexpr std::array<Option, 4> element_options{help_option, csv_option, Option{"--max-number", true},
                                                Option{"--all", false}};
constexpr std::array<Option, 8> value_options{help_option,
                                              csv_option,
                                              Option{"--step", true},
                                              Option{"--node", true},
                                              Option{"--entry", true},
                                              Option{"--element", true},
                                              Option{"--position", true},
                                              Option{"--label", true}};
constexpr std::array<Option, 9> history_options{help_option,
                                                csv_option,
                                                Option{"--svg", true},
                                                Option{"--count", true},
                                                Option{"--node", true},
                                                Option{"--entry", true},
                                                Option{"--element", true},
                                                Option{"--position", true},
                                                Option{"--label", true}};

constexpr std::array<Option, 9> stats_options{help_option,
                                              csv_option,
                                              Option{"--from", true},
                                              Option{"--to", true},
                                              Option{"--node", true},
                                              Option{"--entry", true},
                                              Option{"--element", true},
                                              Option{"--position", true},
                                              Option{"--label", true}};
constexpr std::array<Option, 3> snapshot_options{help_option, csv_option, Option{"--step", true}};
constexpr std::array<Option, 5> range_options{help_option, csv_option, Option{"--from", true}, Option{"--to", true},
                                              Option{"--svg", true}};

constexpr std::string_view info_help =
    "usage: tmrdar info JOB [--csv]\n"
    "\n"
    "What the job is: the files found and their version codes, the format, the title and\n"
    "analysis details, the model dimensions, and the number of time steps and their time range.\n"
    "\n"
    "  --csv           comma-separated values: field,value\n";

constexpr std::string_view nodes_help =
    "usage: tmrdar nodes JOB [--csv] [--max-number N]\n"
    "\n"
    "The nodes of the model in row order, those of the structure and then the auxiliary\n"
    "nodes: kind, node number, row, and the x, y and z of the undeformed model.\n"
    "\n"
    "The nodes are found by their numbers: those that the elements' ends name, then 0, 1, 2 ...\n"
    "up to N (default 1000000). A row whose number lies above N, or repeats the number of an\n"
    "earlier row, is not listed, and a warning on standard error tells how many rows are missing.\n"
    "\n"
    "  --csv           comma-separated values\n"
    "  --max-number N  the highest number to look for\n";

constexpr std::string_view elements_help =
    "usage: tmrdar elements JOB [--csv] [--all] [--max-number N]\n"
    "\n"
    "The elements of the model in row order, those of the structure and then the auxiliary\n"
    "elements: kind, element number, row, the numbers of its two nodes, its length, and the\n"
    "distance along the riser of its start and its end (the rows laid end to end in row order).\n"
    "An auxiliary element has no length or distance; its nodes are auxiliary nodes.\n"
    "\n"
    "  --csv           comma-separated values\n"
    "  --all           also every other stored property: a8, b5 (words 8 and 5 of the element's\n"
    "                  first and second record), section-2 and section-4 (of its section record),\n"
    "                  fluid-1 to fluid-3 (the external fluid), b1 to b4, section-3, a6, a7, b6 to\n"
    "                  b8 and c1\n"
    "  --max-number N  the highest element number to look for (default 1000000); rows whose\n"
    "                  number lies above it are not listed, as for nodes\n";

constexpr std::string_view curve_help =
    "usage: tmrdar curve JOB ID [--csv]\n"
    "\n"
    "The points of stress-strain curve ID of the job's nonlinear material table: point, first\n"
    "and second value, in the order stored.\n"
    "\n"
    "  --csv           comma-separated values\n";

constexpr std::string_view value_help =
    "usage: tmrdar value JOB TYPE [SUBTYPE] --step STEP ITEM [--csv]\n"
    "\n"
    "One result at one time step: the step, its time and the value.\n"
    "\n"
    "  --step STEP     the time step, 1 to the job's number of steps\n"
    "\n" TMRDAR_CLI_REQUEST_HELP
    "\n"
    "example: tmrdar value riser displacement 3 --node 12 --step 40\n";

constexpr std::string_view history_help =
    "usage: tmrdar history JOB TYPE [SUBTYPE] ITEM [--count N] [--csv] [--svg FILE]\n"
    "\n"
    "One result at every time step from the first: step, time and value, a line a step.\n"
    "\n"
    "  --count N       only the first N steps\n"
    "  --svg FILE      also draw the value against time, an SVG graph written to FILE\n"
    "\n" TMRDAR_CLI_REQUEST_HELP
    "\n"
    "example: tmrdar history riser element-force 1 --element 5 --position 2 --csv\n";

constexpr std::string_view stats_help =
    "usage: tmrdar stats JOB TYPE [SUBTYPE] ITEM [--from STEP] [--to STEP] [--csv]\n"
    "\n"
    "The statistics of one result over steps --from to --to (the whole run unless given):\n"
    "first-step and last-step, the minimum and the maximum with the step of each (the first\n"
    "step where the extreme repeats), the mean and the standard deviation (of the whole\n"
    "population: the sum of squared deviations over the number of steps).\n"
    "\n"
    "  --from STEP     the first step, 1 unless given\n"
    "  --to STEP       the last step, the job's last unless given\n"
    "\n" TMRDAR_CLI_REQUEST_HELP
    "\n"
    "example: tmrdar stats riser element-force 1 --element 1 --from 200\n";

// The output types along the riser, for snapshot and range.
#define TMRDAR_CLI_RISER_HELP                                                                             \
  "TYPE is an output type of a node or an element, by number or name, and SUBTYPE as for\n"               \
  "tmrdar value (see tmrdar value --help): displacement, velocity, acceleration and node-contact\n"       \
  "give a row a node, each node that an element's end names, in the elements' row order;\n"              \
  "element-force and element-pressure give a row for the start, middle and end of each\n"                \
  "element. distance is the distance along the riser, the elements laid end to end in row order.\n"     \
  "On a terminal, standard error shows how many points are done.\n"

constexpr std::string_view snapshot_help =
    "usage: tmrdar snapshot JOB TYPE SUBTYPE --step STEP [--csv]\n"
    "\n"
    "One result at one time step along the whole riser: node (or element and position),\n"
    "distance and value.\n"
    "\n"
    "  --step STEP     the time step, 1 to the job's number of steps\n"
    "  --csv           comma-separated values\n"
    "\n" TMRDAR_CLI_RISER_HELP
    "\n"
    "example: tmrdar snapshot riser element-force 1 --step 400\n";

constexpr std::string_view range_help =
    "usage: tmrdar range JOB TYPE SUBTYPE [--from STEP] [--to STEP] [--csv] [--svg FILE]\n"
    "\n"
    "The range graph of one result along the whole riser over steps --from to --to (the whole\n"
    "run unless given): for each node (or element and position), its distance, the minimum and\n"
    "the maximum with the step of each, the mean and the standard deviation, as tmrdar stats\n"
    "gives them.\n"
    "\n"
    "  --from STEP     the first step, 1 unless given\n"
    "  --to STEP       the last step, the job's last unless given\n"
    "  --csv           comma-separated values\n"
    "  --svg FILE      also draw the minimum, maximum and mean against the distance along the\n"
    "                  riser, an SVG graph written to FILE\n"
    "\n" TMRDAR_CLI_RISER_HELP
    "\n"
    "example: tmrdar range riser element-force 1 --from 500\n";

#undef TMRDAR_CLI_RISER_HELP
#undef TMRDAR_CLI_REQUEST_HELP

constexpr std::array<Command, 9> all{{
    {"info", info_help, plain_options, info},
    {"nodes", nodes_help, node_options, nodes},
    {"elements", elements_help, element_options, elements},
    {"value", value_help, value_options, value},
    {"history", history_help, history_options, history},
    {"stats", stats_help, stats_options, stats},
    {"snapshot", snapshot_help, snapshot_options, snapshot},
    {"range", range_help, range_options, range},
    {"curve", curve_help, plain_options, curve},
}};

}  // namespace

const std::string_view usage =
    "usage: tmrdar COMMAND JOB [arguments] [options]\n"
    "\n"
    "Reads the results of an analysis: the motion database JOB.dbm and the force database\n"
    "JOB.dbf. JOB is the path of the job with any extension or none.\n"
    "\n"
    "commands:\n"
    "  info JOB                    the files, format, title, model dimensions and time range\n"
    "  nodes JOB                   the nodes and their coordinates\n"
    "  elements JOB                the elements, their nodes, lengths and distances along the riser\n"
    "  value JOB TYPE [SUBTYPE]    one result at one time step\n"
    "  history JOB TYPE [SUBTYPE]  one result at every time step, with a time column\n"
    "  stats JOB TYPE [SUBTYPE]    minimum, maximum, mean and standard deviation of one result\n"
    "  snapshot JOB TYPE SUBTYPE   one result at one time step along the whole riser\n"
    "  range JOB TYPE SUBTYPE      the range graph of one result along the whole riser\n"
    "  curve JOB ID                the points of a stress-strain curve\n"
    "\n"
    "Tables are aligned text, or with --csv comma-separated values. tmrdar COMMAND --help\n"
    "tells more about a command. The exit status is 0 on success, 1 when the job cannot\n"
    "answer, and 2 for a mistake in the command line; the reason is one line on standard error.\n";

std::span<const Command> commands() { return all; }

}  // namespace tmrdar::cli
