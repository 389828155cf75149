// The result frames as the builder writes them: counts worked by hand, the
// value of its own that every word holds, values set by name, words refused.
#include <gtest/gtest.h>

#include <bit>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "builder/job.h"

namespace tmrdar::builder {
namespace {

using K = SectionKind;

// Word `number` (from 1) of an image.
float word(const FileImage& image, int64_t number) {
  const auto at = static_cast<std::size_t>(number - 1) * 4;
  uint32_t bits = 0;
  for (std::size_t b = 4; b-- > 0;) bits = (bits << 8) | static_cast<uint32_t>(image.bytes().at(at + b));
  return std::bit_cast<float>(bits);
}

std::vector<K> kinds(const FrameLayout& layout) {
  std::vector<K> kinds;
  for (const FrameSection& s : layout) kinds.push_back(s.kind);
  return kinds;
}

void flags(Job& job, std::initializer_list<int> flags) {
  for (const int f : flags) job.run.output_flags[static_cast<std::size_t>(f - 1)] = 1;
}

TEST(FrameWalk, EachFormatsFramesAsCountedByHand) {
  // 3 nodes and 2 elements: node contact words of 8 or 7 a node, the step
  // records behind the sections of flags 1, 4 and 5; in V861 the force frame
  // adds flags 17 to 19, the spare record and 2 dampers. The header ends
  // behind blocks 46 to 51 in V861, 46 and 47 in V821 to V841.
  struct Row {
    const header::FormatVersion* format;
    int64_t contact_words, contact_words_a_node, motion_records, motion_step_last, force_records, force_step_last;
    int32_t header;
  };
  const std::vector<Row> rows{{&header::v861, 32, 8, 14, 72, 12, 80, 70}, {&header::v841, 32, 8, 14, 72, 3, 24, 65},
                              {&header::v831, 24, 7, 13, 64, 3, 24, 65},  {&header::v821, 24, 7, 13, 64, 3, 24, 65},
                              {&header::v815, 24, 7, 11, 64, 3, 24, 56},  {&header::v811, 24, 7, 9, 64, 3, 24, 55}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.format->name);
    Job job(*row.format);
    job.run.num_time_steps = 2;
    job.step_times = {0.5F, 1.5F};
    job.model.nodes.resize(3);
    job.model.elements.resize(2);
    job.model.aux_elements.resize(9);
    job.model.vessels.resize(1);
    job.model.damper_elements = {1, 2};
    job.run.tail_pair_count_a = 1;
    job.run.aux_element_result_sets = 1;
    flags(job, {1, 4, 5, 17, 18, 19});
    const FrameLayout motion = job.frame_sections(FileKind::motion);
    const FrameLayout force = job.frame_sections(FileKind::force);
    EXPECT_EQ(*find_section(motion, K::node_contact),
              (FrameSection{K::node_contact, 25, row.contact_words, row.contact_words_a_node, 3}));
    if (row.format != &header::v861) {
      EXPECT_EQ(kinds(force), (std::vector<K>{K::reaction, K::element_9, K::force_step_record}));
    }
    const header::HeaderVariables v = job.written_run();
    EXPECT_EQ(std::tuple(find_section(motion, K::motion_step_record)->last_word(), v.motion_step_records,
                         find_section(force, K::force_step_record)->last_word(), v.force_step_records,
                         v.result_start_record),
              std::tuple(row.motion_step_last, row.motion_records, row.force_step_last, row.force_records, row.header));
    // The time of step 2 where its frame's step record stands, in both files.
    for (const auto& [kind, records, last] : {std::tuple(FileKind::motion, row.motion_records, row.motion_step_last),
                                              std::tuple(FileKind::force, row.force_records, row.force_step_last)}) {
      const FileImage image = job.image(kind);
      EXPECT_EQ(image.records(), row.header + 2 * records);
      EXPECT_EQ(word(image, 8 * (row.header + records) + last - 7), 1.5F);
    }
  }
}

// A job whose frames hold every section of both files.
Job every_section(int32_t steps) {
  Job job;
  job.run.num_time_steps = steps;
  for (int32_t i = 1; i <= 3; ++i) job.model.nodes.push_back({.file_number = i, .user_number = 10 * i});
  for (int32_t e = 1; e <= 2; ++e) {
    job.model.elements.push_back({.file_number = e, .user_number = e, .nodes = {e, e + 1}});
  }
  job.model.aux_nodes = {{.number = 71}, {.number = 72}};
  job.model.aux_elements.resize(9);
  job.model.boundary_conditions = {3, 1};
  job.model.guide_surfaces.resize(2);
  job.model.zero_gap_guides.resize(1);
  job.model.vessels.resize(2);
  job.model.damper_elements = {1, 2};
  job.run.num_pip_connections = 2;
  job.run.num_clash_pairs = 3;
  job.run.tail_pair_count_a = 1;
  job.run.tail_pair_count_b = 2;
  job.run.aux_element_result_sets = 2;
  job.run.output_flags.fill(1);
  return job;
}

TEST(FrameWords, EveryWordHoldsAValueThatNamesIt) {
  const Job job = every_section(3);
  const header::HeaderVariables v = job.written_run();
  std::set<float> seen;
  for (const FileKind kind : {FileKind::motion, FileKind::force}) {
    const FileImage image = job.image(kind);
    const FrameLayout layout = job.frame_sections(kind);
    const int64_t words = frame_words(layout);
    EXPECT_EQ(frame_sections(kind, job.counted_run()).size(), kind == FileKind::motion ? 13U : 26U);
    for (int32_t n = 1; n <= 3; ++n) {
      for (int64_t k = 1; k <= words; ++k) {
        const float value = word(image, 8 * v.result_start_record + (n - 1) * words + k);
        const FrameWord word = word_at(layout, n, k);
        ASSERT_EQ(value, job.value(word)) << word;
        ASSERT_EQ(job.word_number(word), 8 * v.result_start_record + (n - 1) * words + k) << word;
        if ((word.section == K::motion_step_record || word.section == K::force_step_record) &&
            word.component == step_word::time) {
          EXPECT_EQ(value, job.step_time(n));
          continue;
        }
        EXPECT_NE(value, 0.0F) << word;
        EXPECT_TRUE(seen.insert(value).second) << word << " repeats " << value;
        EXPECT_EQ(job.word_of_default(value), word) << value;
      }
    }
  }
  EXPECT_EQ(job.word_of_default(0.0F), std::nullopt);
  EXPECT_EQ(job.word_of_default(2.5F), std::nullopt);
  EXPECT_EQ(job.word_of_default(1.0e7F), std::nullopt) << "past the frames of three steps";

  // A long run is written frame by frame into the image; its last frame is whole.
  Job run;
  run.run.num_time_steps = 100'000;
  run.model.nodes.resize(2);
  flags(run, {1});
  run.results.set(K::displacement, 100'000, 2, 3, 4.5F);
  const FileImage image = run.image(FileKind::motion);
  const int64_t records = run.written_run().motion_step_records;
  EXPECT_EQ(image.records(), run.written_run().result_start_record + 100'000 * records);
  EXPECT_EQ(word(image, 8 * image.records()),
            run.value(word_at(run.frame_sections(FileKind::motion), 100'000, 8 * records)));
  EXPECT_EQ(word(image, run.word_number({K::displacement, 100'000, 2, 3})), 4.5F);
}

// Values set by name stand above the frame function, which stands above
// the value that names the word; the frame function is asked once a word.
TEST(FrameValues, ValuesSetByNameAndByTheFrameFunctionAreWritten) {
  Job job = every_section(8);
  job.results.set(K::displacement, 7, 3, 2, 1.25F).set(K::element_24, 8, 2, 3, 12.5F);
  job.results.set(K::force_step_record, 5, 1, step_word::time, 99.0F);
  int64_t calls = 0;
  job.frame_value = [&calls](const FrameWord& w) -> std::optional<float> {
    ++calls;
    if (w.section != K::node_contact || w.component != 8) return std::nullopt;
    return static_cast<float>(1000 * w.step + w.entry);
  };
  job.results.set(K::node_contact, 6, 1, 8, -1.0F);
  const FileImage motion = job.image(FileKind::motion);
  const FileImage force = job.image(FileKind::force);
  EXPECT_EQ(calls, 8 * (frame_words(job.frame_sections(FileKind::motion)) +
                        frame_words(job.frame_sections(FileKind::force))));
  const auto at = [&](const FileImage& image, const FrameWord& w) { return word(image, job.word_number(w)); };
  EXPECT_EQ(at(motion, {K::displacement, 7, 3, 2}), 1.25F);
  EXPECT_EQ(at(motion, {K::displacement, 6, 3, 2}), job.value({K::displacement, 6, 3, 2})) << "a step not set";
  EXPECT_EQ(at(force, {K::element_24, 8, 2, 3}), 12.5F);
  EXPECT_EQ(at(force, {K::force_step_record, 5, 1, step_word::time}), 99.0F);
  EXPECT_EQ(at(motion, {K::node_contact, 5, 2, 8}), 5002.0F);
  EXPECT_EQ(at(motion, {K::node_contact, 6, 1, 8}), -1.0F);
  EXPECT_EQ(at(motion, {K::node_contact, 6, 2, 7}), job.value({K::node_contact, 6, 2, 7}));
}

TEST(FrameValues, AWordTheFramesDoNotHoldIsRefused) {
  Job job;
  job.run.num_time_steps = 2;
  job.model.nodes.resize(3);  // 18 words in 24
  flags(job, {1});
  const std::vector<FrameWord> outside{
      {K::displacement, 1, 1, 7},   // past the 6 words of an entry
      {K::displacement, 1, 5, 1},   // past the section's records
      {K::displacement, 1, 0, 1},   // entries count from 1
      {K::displacement, 3, 1, 1},   // a step the job does not have
      {K::displacement, 0, 1, 1},
      {K::velocity, 1, 1, 1},       // a section the frames do not hold
      {K::motion_step_record, 1, 2, 1}};
  for (const FrameWord& word : outside) {
    EXPECT_THROW(job.value(word), std::out_of_range) << word;
    Job set = job;
    set.results.set(word, 1.0F);
    EXPECT_THROW(set.image(word.file()), std::invalid_argument) << word;
  }
  // The words behind the last entry are the section's own: entry 4 of 24 words.
  EXPECT_NO_THROW(job.value({K::displacement, 2, 4, 6}));
  // With the start record set no frames are written.
  job.run.result_start_record = 40;
  EXPECT_THROW(job.value({K::displacement, 1, 1, 1}), std::out_of_range);
  job.results.set(K::displacement, 1, 1, 1, 2.0F);
  EXPECT_THROW(job.image(FileKind::motion), std::invalid_argument);
  EXPECT_NO_THROW(job.image(FileKind::force));
}

}  // namespace
}  // namespace tmrdar::builder
