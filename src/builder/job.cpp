#include "builder/job.h"

#include <limits>
#include <stdexcept>

namespace tmrdar::builder {

using common_database::BlockAddresses;

namespace {

// Blocks 2 to 15 and 48 from the run control values, word by word, those
// that the format has.
std::map<int32_t, std::vector<Record>> run_control_blocks(const Job& job, const FormatLayout& layout) {
  const header::HeaderVariables v = job.written_run();
  std::map<int32_t, std::vector<Record>> blocks;
  blocks[2] = {Record::ints({0, 0, 0, 0, v.tail_pair_count_a, v.tail_pair_count_b, v.num_binary_items, v.hdr_2_8})};
  blocks[3] = {Record::ints({v.result_start_record, static_cast<int32_t>(v.motion_step_records),
                             static_cast<int32_t>(v.force_step_records), v.hdr_3_4,
                             static_cast<int32_t>(v.motion_start_offset), static_cast<int32_t>(v.force_start_offset),
                             v.hdr_3_7, v.num_panels})};
  blocks[4] = {Record::reals({v.start_time, v.hdr_4_2, v.hdr_4_3, v.hdr_4_4, v.hdr_4_5, v.hdr_4_6})
                   .integer(7, v.pip_nodes_per_pair)
                   .integer(8, v.num_nonlinear_e_tables)};
  blocks[5] = {Record::reals({v.analysis_detail_3, v.external_fluid_default_a, v.external_fluid_default_b})
                   .integer(4, v.num_guide_surfaces)
                   .integer(5, v.num_zero_gap_guides)
                   .integer(6, v.num_pip_connections)
                   .integer(7, v.num_pipe_in_pipe)
                   .integer(8, v.num_clash_pairs)};
  blocks[6] = {Record::ints({v.num_elements, v.num_nodes, v.nodes_per_element, v.coords_per_node, v.dofs_per_node,
                             v.num_boundary_conditions, v.num_element_sets, v.num_node_sets})};
  blocks[7] = {Record::ints({v.num_time_steps})};
  blocks[8] = {Record::ints({v.analysis_detail_1, v.hdr_8_2, job.seabed_code, v.num_seabed_points,
                             v.num_wave_harmonics})
                   .real(6, v.hdr_8_6)
                   .integer(7, v.num_vessels)
                   .integer(8, v.hdr_8_8)};
  Record flags_1;
  Record flags_2;
  for (int w = 1; w <= 8; ++w) {
    flags_1.integer(w, v.output_flags[static_cast<std::size_t>(w - 1)]);
    flags_2.integer(w, v.output_flags[static_cast<std::size_t>(w + 7)]);
  }
  blocks[9] = {flags_1};
  blocks[10] = {flags_2};
  blocks[11] = {Record::ints({v.num_aux_nodes, v.num_aux_elements, v.num_point_masses, v.num_point_loads,
                              v.num_current_points, v.num_floating_bodies, v.num_installation_criteria,
                              v.num_labels})};
  blocks[12] = {Record::ints({v.num_damper_elements, v.output_flags[16]})};
  blocks[13] = {Record::ints({v.hdr_13_1, v.num_dsp_wave_harmonics, v.hdr_13_3, v.hdr_13_4, 0, v.hdr_13_6})
                    .integer(8, v.aux_element_result_sets)};
  Record block_14 = Record::ints({v.num_target_spectrum_intervals, 0, v.hdr_14_3, v.hdr_14_4, job.hdr_14_5_code});
  switch (layout.block_14) {
    case Block14Form::angle_and_word_7: block_14.real(6, job.seabed_angle).integer(7, v.hdr_14_7); break;
    case Block14Form::angle: block_14.real(6, job.seabed_angle); break;
    case Block14Form::integers: block_14.integer(6, 0).integer(7, v.hdr_14_7).integer(8, 0); break;
  }
  blocks[14] = {block_14};
  // The title in pieces of 28, 28 and 24 characters, one a record.
  const std::string_view title = v.analysis_title.view();
  blocks[15] = {Record::text(title.substr(0, 28)), Record::text(title.substr(28, 28)),
                Record::text(title.substr(56, 24))};
  // Block 48: the shape function and plastic hardening counts, and flags 18 and 19.
  blocks[48] = {Record::ints({v.shape_function_flag, v.num_plastic_hardening_models, v.output_flags[17],
                              v.output_flags[18], v.shape_function_order})};
  std::erase_if(blocks, [&layout](const auto& block) { return !has_block(layout, block.first); });
  return blocks;
}

// Where the job's blocks stand: by the directory in V861, by the format's
// fixed records and the counts in the others.
HeaderPlan plan_of(const Job& job) {
  const FormatLayout& layout = layout_of(*job.format);
  const common_database::BlockCounts counts = job.layout_counts();
  if (!layout.block_directory) return plan_without_directory(layout, counts);
  HeaderPlan plan;
  int64_t total = 0;
  const BlockAddresses directory = job.directory(&total);
  for (int32_t k = 2; k <= common_database::num_header_blocks && k <= directory.num_blocks; ++k) {
    plan.blocks[static_cast<std::size_t>(k)] = {.first = directory.entry(k) - 1,
                                                .records = common_database::block_records(k, counts)};
  }
  plan.end = total - 1;
  return plan;
}

}  // namespace

Job::Job(const header::FormatVersion& format) : format(&format) {
  layout_of(format);  // a format that the builder cannot write is refused here
  motion.first.database_version = format.database_version;
  force.first.database_version = format.database_version;
  run.num_time_steps = 1;
  run.nodes_per_element = 2;
  run.coords_per_node = 3;
  run.dofs_per_node = 6;
}

header::HeaderVariables Job::counted_run() const {
  header::HeaderVariables v = run;
  count_model(model, v);
  hold_run(layout_of(*format), v);
  return v;
}

common_database::BlockCounts Job::layout_counts() const {
  common_database::BlockCounts counts = this->counts;
  const header::HeaderVariables run = counted_run();  // the counts as written
  const auto records = [](int32_t& field, int64_t model_records) {
    if (field != 0) return;
    if (model_records > std::numeric_limits<int32_t>::max()) {
      throw std::invalid_argument("the model's records overflow a count of the layout");
    }
    field = static_cast<int32_t>(model_records);
  };
  const FormatLayout& layout = layout_of(*format);
  records(counts.plastic_hardening_records, model_plastic_hardening_records(model));
  records(counts.binary_data_records, model_binary_data_records(model));
  if (!has_block(layout, 50)) counts.plastic_hardening_records = 0;
  if (!holds_rows(layout, 52)) counts.binary_data_records = 0;
  counts.num_elements = run.num_elements;
  counts.num_nonlinear_e_tables = run.num_nonlinear_e_tables;
  counts.num_nodes = run.num_nodes;
  counts.num_aux_elements = run.num_aux_elements;
  counts.num_aux_nodes = run.num_aux_nodes;
  counts.num_seabed_points = run.num_seabed_points;
  counts.num_wave_harmonics = run.num_wave_harmonics;
  counts.num_dsp_wave_harmonics = run.num_dsp_wave_harmonics;
  counts.num_element_sets = run.num_element_sets;
  counts.num_node_sets = run.num_node_sets;
  counts.num_labels = run.num_labels;
  counts.num_point_masses = run.num_point_masses;
  counts.num_point_loads = run.num_point_loads;
  counts.num_boundary_conditions = run.num_boundary_conditions;
  counts.num_current_points = run.num_current_points;
  counts.pip_nodes_per_pair = run.pip_nodes_per_pair;
  counts.num_pipe_in_pipe = run.num_pipe_in_pipe;
  counts.num_guide_surfaces = run.num_guide_surfaces;
  counts.num_panels = run.num_panels;
  counts.num_zero_gap_guides = run.num_zero_gap_guides;
  counts.num_installation_criteria = run.num_installation_criteria;
  counts.num_floating_bodies = run.num_floating_bodies;
  counts.num_vessels = run.num_vessels;
  counts.num_target_spectrum_intervals = run.num_target_spectrum_intervals;
  counts.num_plastic_hardening_models = run.num_plastic_hardening_models;
  counts.num_damper_elements = run.num_damper_elements;
  return counts;
}

header::HeaderVariables Job::written_run() const {
  header::HeaderVariables v = counted_run();
  if (v.result_start_record != 0) return v;
  v.result_start_record = static_cast<int32_t>(plan_of(*this).end);
  v.motion_start_offset = 0;
  v.force_start_offset = 0;
  v.motion_step_records = motion_frame_records();
  v.force_step_records = force_frame_records();
  return v;
}

int64_t Job::block_record(int32_t k) const {
  if (!has_block(layout_of(*format), k)) return -1;
  return plan_of(*this).place(k).first;
}

BlockAddresses Job::directory(int64_t* header_end) const {
  if (!layout_of(*format).block_directory) {
    throw std::logic_error(std::string(format->name) + " has no block directory");
  }
  BlockAddresses directory;
  int32_t status = 0;
  common_database::init_block_addresses(directory, num_block_addresses, status);
  int64_t total = 0;
  common_database::set_block_addresses(directory, layout_counts(), total);
  if (header_end != nullptr) *header_end = total;
  return directory;
}

int32_t Job::last_directory_record() const {
  if (!layout_of(*format).block_directory) {
    throw std::logic_error(std::string(format->name) + " has no block directory");
  }
  // The directory starts in record 3 and fills eight entries a record.
  return 2 + (num_block_addresses + 7) / 8;
}

FileImage Job::image(FileKind kind) const {
  const DatabaseFileDescription& file = kind == FileKind::motion ? motion : force;
  const FormatLayout& layout = layout_of(*format);
  FileImage image;

  // Record 0: the first record.
  Record first = Record::ints({file.first.database_version, file.first.word_2, file.first.analysis_detail_2});
  for (int w = 0; w < 5; ++w) first.integer(4 + w, file.first.file_words[static_cast<std::size_t>(w)]);
  image.put(0, first);

  // In V861, record 1: the directory size record; then the entries, 8 a
  // record. The blocks stand behind the directory.
  int64_t first_block_record = 1;
  if (layout.block_directory) {
    const int32_t last_record = last_directory_record();
    image.put(1, Record::ints({num_block_addresses, last_record}));
    const BlockAddresses addresses = directory();
    for (std::size_t i = 0; i < addresses.addresses.size(); ++i) {
      image.put_int(2 + static_cast<int64_t>(i / 8), static_cast<int>(i % 8) + 1, addresses.addresses[i]);
    }
    first_block_record = last_record;  // 0-based record behind the directory
  }

  // The blocks, each at its place, each within the records reserved for it.
  const HeaderPlan plan = plan_of(*this);
  const header::HeaderVariables v = counted_run();
  std::map<int32_t, std::vector<Record>> blocks = run_control_blocks(*this, layout);
  blocks.merge(model_blocks(model, v, layout));
  for (const auto& [k, records] : this->blocks) blocks[k] = records;
  for (const auto& [k, records] : blocks) {
    const BlockPlace& place = plan.place(k);
    if (!has_block(layout, k) || place.first < 0) {
      throw std::invalid_argument("block " + std::to_string(k) + " has no place in a " + std::string(format->name) +
                                  " file");
    }
    if (place.first < first_block_record || static_cast<int64_t>(records.size()) > place.records) {
      throw std::invalid_argument("block " + std::to_string(k) + " does not fit its place in the layout");
    }
    for (std::size_t r = 0; r < records.size(); ++r) image.put(place.first + static_cast<int64_t>(r), records[r]);
  }
  // The header ends before the record behind it.
  image.extend_to(plan.end);
  if (run.result_start_record != 0) {
    for (const auto& set : results.all()) {
      if (set.first.file() == kind) throw std::invalid_argument("frame values are set, and no frames are written");
    }
    return image;
  }

  put_frames(image, kind, plan.end);
  return image;
}

void Job::write(const std::string& stem) const {
  if (motion.present && !image(FileKind::motion).write(stem + ".dbm")) {
    throw std::runtime_error("cannot write " + stem + ".dbm");
  }
  if (force.present && !image(FileKind::force).write(stem + ".dbf")) {
    throw std::runtime_error("cannot write " + stem + ".dbf");
  }
}

}  // namespace tmrdar::builder
