#include "header/format_reader.h"

#include <limits>
#include <new>
#include <string>

#include "core/platform/platform.h"
#include "frame/base/error_handling.h"
#include "frame/base/header_data.h"
#include "frame/base/io_units.h"
#include "header/block_location.h"

namespace tmrdar::header {
namespace {

void report(std::string_view text) {
  error_handling::error3(true, error_handling::database_postprocessing, text);
}

constexpr std::string_view header_read_failure = "Unable to read from database header.";

}  // namespace

void FormatReader::report_open_failure(std::string_view message, const std::string& path) const {
  if (version.open_message_has_path) {
    report(std::string(message) + " " + path);
  } else {
    report(message);
  }
}

void FormatReader::open_database_files(std::string_view name, std::string_view directory,
                                                     bool& failed) {
  failed = false;
  static_cast<HeaderVariables&>(*this) = HeaderVariables{};
  start_sum_64 = version.start_sum_64;
  node_contact_words = version.node_contact_words;
  clear_record_cache();
  close_database_files();

  const std::string stem = std::string(directory) + std::string(name);
  const std::string motion_path = stem + ".dbm";
  const std::string force_path = stem + ".dbf";
  motion_file_open = platform::path_exists(motion_path);
  force_file_open = platform::path_exists(force_path);
  if (!motion_file_open && !force_file_open) {
    report("No database files exist for opening.");
    failed = true;
    return;
  }

  const auto open = [this](record_files::RecordFile& file, int32_t unit, const std::string& path) {
    if (version.access == FileAccess::frame_units) {
      return io_units::unit(unit).open(path, io_units::database_record_length);
    }
    return file.open(path, record_files::mode_read);
  };
  if (motion_file_open && !open(motion_file, io_units::motion_unit, motion_path)) {
    report_open_failure("Unable to open the specified motion database file:", motion_path);
    failed = true;
    return;
  }
  if (force_file_open && !open(force_file, io_units::force_unit, force_path)) {
    report_open_failure("Unable to open the specified force database file:", force_path);
    failed = true;
    return;
  }

  int32_t flag = 0;
  read_database_header(flag);
  failed = (flag & 1) != 0;
  if (version.builds_integration_points && shape_function_flag == 1) build_integration_points(failed);
}

void FormatReader::close_database_files() {
  if (version.access == FileAccess::frame_units) {
    io_units::unit(io_units::motion_unit).close();
    io_units::unit(io_units::force_unit).close();
    return;
  }
  if (motion_file.is_open()) motion_file.close();
  if (force_file.is_open()) force_file.close();
}

std::array<int32_t, num_model_dimensions> FormatReader::model_dimensions() const {
  return {num_time_steps,   pip_nodes_per_pair,      num_elements,       num_nodes,
          num_aux_elements, num_aux_nodes,           num_labels,         num_boundary_conditions,
          num_guide_surfaces, num_zero_gap_guides,   num_pipe_in_pipe,   num_pip_connections,
          num_clash_pairs,  num_nonlinear_e_tables};
}

void FormatReader::update_dimensions(std::span<int32_t> dims, int32_t& required, bool& failed) {
  required = static_cast<int32_t>(num_model_dimensions);
  failed = dims.size() < num_model_dimensions;
  if (failed) return;
  const std::array<int32_t, num_model_dimensions> dimensions = model_dimensions();
  std::copy(dimensions.begin(), dimensions.end(), dims.begin());
  header_data::save_model_dimensions(0, dimensions, analysis_detail_1, analysis_detail_2,
                                     analysis_detail_3, analysis_title.view());
}

void FormatReader::read_database_header(int32_t& flag) {
  header_ints.fill(0);
  header_reals.fill(0.0F);
  analysis_title.blank();
  flag = 0;
  if (version.access == FileAccess::frame_units) {
    header_file = DatabaseFile(io_units::unit(motion_file_open ? io_units::motion_unit : io_units::force_unit));
  } else {
    header_file = DatabaseFile(motion_file_open ? motion_file : force_file);
  }

  int32_t status = 0;
  header_file.read_int_at(header_ints, 1, status);
  if (status != 0) {
    report(header_read_failure);
    flag = -1;
    return;
  }
  (motion_file_open ? motion_db_version : force_db_version) = header_ints[0];
  analysis_detail_2 = header_ints[2];
  std::copy(header_ints.begin() + 3, header_ints.end(), file_words.begin());

  // A format without a directory keeps its run control blocks at fixed
  // records, and finds its model blocks from the counts once the tables
  // are made.
  if (version.blocks == BlockLocation::directory) {
    load_block_directory(flag);
  } else {
    block_addresses.reset();
  }
  if (flag != 0) return;
  read_run_control_blocks(flag);
  if (flag != 0) return;

  motion_frame_records = motion_step_records;
  force_frame_records = force_step_records;
  deallocate_database_header_arrays();
  allocate_database_header_arrays(flag);
  if (flag == 0 && version.blocks == BlockLocation::fixed_layout) set_computed_block_addresses(flag);
  if (flag == 0) read_model_blocks(flag);
  // The indexes cover the tables as far as they were read, so that a lookup
  // finds what a search of the tables would find.
  if (!build_indexes() && flag == 0) {
    error_handling::error3(true, error_handling::database_postprocessing,
                           "Unable to allocate memory for database header data.");
    flag = -1;
  }
}

void FormatReader::read_model_blocks(int32_t& flag) {
  if (!read_structure_blocks(flag) || !read_sea_blocks(flag) || !read_set_blocks(flag) ||
      !read_current_profile(flag) || !read_contact_blocks(flag) || !read_target_spectrum(flag) ||
      !read_material_and_item_blocks(flag)) {
    return;
  }
  read_time_list(flag);
}

bool FormatReader::build_indexes() {
  HeaderTables& t = tables;
  const auto column = [](const Table<int32_t, 2>& table, int64_t j) {
    const auto rows = static_cast<std::size_t>(table.extent(1));
    if (!table.allocated() || table.extent(2) < j) return std::span<const int32_t>();
    return std::span<const int32_t>(table.data()).subspan(static_cast<std::size_t>(j - 1) * rows, rows);
  };
  // The element ends were translated through the node file number index; it
  // is built again only when it covers other rows than the whole column.
  const std::span<const int32_t> file_numbers = column(t.node_numbers, 1);
  return (t.node_file_number_index.covers(file_numbers) || t.node_file_number_index.build(file_numbers)) &&
         t.node_user_number_index.build(column(t.node_numbers, 2)) &&
         t.element_user_number_index.build(column(t.element_numbers, 2)) &&
         t.aux_node_number_index.build(t.aux_node_numbers.data()) &&
         t.aux_element_number_index.build(t.aux_element_numbers.data()) &&
         t.boundary_condition_index.build(t.boundary_condition_nodes.data()) && build_label_index() &&
         build_model_query_tables(*this);
}

void FormatReader::load_block_directory(int32_t& flag) {
  using common_database::BlockAddresses;
  block_addresses.reset();

  // The size record goes to the same buffer as the first record; a read that
  // finds nothing leaves that record's words in place.
  int32_t status = 0;
  header_file.read_int_at(header_ints, 33, status);
  num_block_addresses = header_ints[0];
  last_directory_record = header_ints[1];

  // A count of more entries than the file has words for is garbage, and is
  // refused before it can size an allocation.
  const int64_t file_records = (header_file.size() + 31) / 32;
  block_addresses.reset(new (std::nothrow) BlockAddresses());
  status = block_addresses == nullptr || int64_t{num_block_addresses} > 8 * file_records ? 1 : 0;
  if (status == 0) common_database::init_block_addresses(*block_addresses, num_block_addresses, status);
  if (status != 0) {
    report(header_read_failure);
    flag = -1;
    return;
  }

  BlockAddresses& blocks = *block_addresses;
  int32_t next = 1;
  // Records behind a full directory would copy nothing, so the walk ends there.
  for (int64_t r = 3; r <= last_directory_record && next <= blocks.num_blocks; ++r) {
    header_file.read_int_at(header_ints, 32 * (r - 1) + 1, status);
    if (status != 0) {
      report("Unable to database header record numbers.");
      flag = -1;
      return;
    }
    common_database::get_block_addresses(blocks, next, header_ints);
  }
  // To 0-based records. The lowest entry cannot go lower and stays what it
  // is: an address before the start of the file either way.
  for (int32_t& address : blocks.addresses) {
    if (address != std::numeric_limits<int32_t>::min()) address -= 1;
  }
}

void FormatReader::set_computed_block_addresses(int32_t& flag) {
  block_addresses.reset(new (std::nothrow) common_database::BlockAddresses());
  if (block_addresses == nullptr) {
    report(header_read_failure);
    flag = -1;
    return;
  }
  v841_set_block_addresses(version, header_block_counts(), *block_addresses);
}

namespace {

using Readers = std::array<FormatReader, format_versions.size()>;

// One reader per format, in the order of format_versions. Made on first use
// and destroyed only by release_readers: the unloading of the library
// releases the last job after the library's static objects are gone.
Readers* readers = nullptr;

Readers& modules() {
  if (readers != nullptr) return *readers;
  readers = new Readers{
      FormatReader(*format_versions[0]), FormatReader(*format_versions[1]),
      FormatReader(*format_versions[2]), FormatReader(*format_versions[3]),
      FormatReader(*format_versions[4]), FormatReader(*format_versions[5])};
  return *readers;
}

}  // namespace

void release_readers() {
  delete readers;
  readers = nullptr;
}

FormatReader* reader_for_version(int32_t database_version) {
  for (FormatReader& module : modules()) {
    if (module.version.database_version == database_version) return &module;
  }
  return nullptr;
}

FormatReader& v861_database_files() { return *reader_for_version(v861.database_version); }
FormatReader& v841_database_files() { return *reader_for_version(v841.database_version); }
FormatReader& v831_database_files() { return *reader_for_version(v831.database_version); }
FormatReader& v821_database_files() { return *reader_for_version(v821.database_version); }
FormatReader& v815_database_files() { return *reader_for_version(v815.database_version); }
FormatReader& v811_database_files() { return *reader_for_version(v811.database_version); }

}  // namespace tmrdar::header
