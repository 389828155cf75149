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

using K = SECTION_KIND;

// Word `number` (from 1) of an image.
float WORD(const FILE_IMAGE& image, int64_t number) {
  const auto at = static_cast<std::size_t>(number - 1) * 4;
  uint32_t bits = 0;
  for (std::size_t b = 4; b-- > 0;) bits = (bits << 8) | static_cast<uint32_t>(image.BYTES().at(at + b));
  return std::bit_cast<float>(bits);
}

std::vector<K> KINDS(const FRAME_LAYOUT& layout) {
  std::vector<K> kinds;
  for (const FRAME_SECTION& s : layout) kinds.push_back(s.KIND);
  return kinds;
}

void FLAGS(JOB& job, std::initializer_list<int> flags) {
  for (const int f : flags) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
}

TEST(FrameWalk, EachFormatsFramesAsCountedByHand) {
  // 3 nodes and 2 elements: node contact words of 8 or 7 a node, the step
  // records behind the sections of flags 1, 4 and 5; in V861 the force frame
  // adds flags 17 to 19, the spare record and 2 dampers. The header ends
  // behind blocks 46 to 51 in V861, 46 and 47 in V821 to V841.
  struct ROW {
    const header::FORMAT_VERSION* FORMAT;
    int64_t CONTACT_WORDS, CONTACT_WORDS_A_NODE, MOTION_RECORDS, MOTION_STEP_LAST, FORCE_RECORDS, FORCE_STEP_LAST;
    int32_t HEADER;
  };
  const std::vector<ROW> rows{{&header::V861, 32, 8, 14, 72, 12, 80, 70}, {&header::V841, 32, 8, 14, 72, 3, 24, 65},
                              {&header::V831, 24, 7, 13, 64, 3, 24, 65},  {&header::V821, 24, 7, 13, 64, 3, 24, 65},
                              {&header::V815, 24, 7, 11, 64, 3, 24, 56},  {&header::V811, 24, 7, 9, 64, 3, 24, 55}};
  for (const ROW& row : rows) {
    SCOPED_TRACE(row.FORMAT->NAME);
    JOB job(*row.FORMAT);
    job.RUN.NUM_TIME_STEPS = 2;
    job.STEP_TIMES = {0.5F, 1.5F};
    job.MODEL.NODES.resize(3);
    job.MODEL.ELEMENTS.resize(2);
    job.MODEL.AUX_ELEMENTS.resize(9);
    job.MODEL.VESSELS.resize(1);
    job.MODEL.DAMPER_ELEMENTS = {1, 2};
    job.RUN.TAIL_PAIR_COUNT_A = 1;
    job.RUN.AUX_ELEMENT_RESULT_SETS = 1;
    FLAGS(job, {1, 4, 5, 17, 18, 19});
    const FRAME_LAYOUT motion = job.FRAME_SECTIONS(FILE_KIND::MOTION);
    const FRAME_LAYOUT force = job.FRAME_SECTIONS(FILE_KIND::FORCE);
    EXPECT_EQ(*FIND_SECTION(motion, K::NODE_CONTACT),
              (FRAME_SECTION{K::NODE_CONTACT, 25, row.CONTACT_WORDS, row.CONTACT_WORDS_A_NODE, 3}));
    if (row.FORMAT != &header::V861) {
      EXPECT_EQ(KINDS(force), (std::vector<K>{K::REACTION, K::ELEMENT_9, K::FORCE_STEP_RECORD}));
    }
    const header::HEADER_VARIABLES v = job.WRITTEN_RUN();
    EXPECT_EQ(std::tuple(FIND_SECTION(motion, K::MOTION_STEP_RECORD)->LAST_WORD(), v.MOTION_STEP_RECORDS,
                         FIND_SECTION(force, K::FORCE_STEP_RECORD)->LAST_WORD(), v.FORCE_STEP_RECORDS,
                         v.RESULT_START_RECORD),
              std::tuple(row.MOTION_STEP_LAST, row.MOTION_RECORDS, row.FORCE_STEP_LAST, row.FORCE_RECORDS, row.HEADER));
    // The time of step 2 where its frame's step record stands, in both files.
    for (const auto& [kind, records, last] : {std::tuple(FILE_KIND::MOTION, row.MOTION_RECORDS, row.MOTION_STEP_LAST),
                                              std::tuple(FILE_KIND::FORCE, row.FORCE_RECORDS, row.FORCE_STEP_LAST)}) {
      const FILE_IMAGE image = job.IMAGE(kind);
      EXPECT_EQ(image.RECORDS(), row.HEADER + 2 * records);
      EXPECT_EQ(WORD(image, 8 * (row.HEADER + records) + last - 7), 1.5F);
    }
  }
}

// A job whose frames hold every section of both files.
JOB EVERY_SECTION(int32_t steps) {
  JOB job;
  job.RUN.NUM_TIME_STEPS = steps;
  for (int32_t i = 1; i <= 3; ++i) job.MODEL.NODES.push_back({.FILE_NUMBER = i, .USER_NUMBER = 10 * i});
  for (int32_t e = 1; e <= 2; ++e) {
    job.MODEL.ELEMENTS.push_back({.FILE_NUMBER = e, .USER_NUMBER = e, .NODES = {e, e + 1}});
  }
  job.MODEL.AUX_NODES = {{.NUMBER = 71}, {.NUMBER = 72}};
  job.MODEL.AUX_ELEMENTS.resize(9);
  job.MODEL.BOUNDARY_CONDITIONS = {3, 1};
  job.MODEL.GUIDE_SURFACES.resize(2);
  job.MODEL.ZERO_GAP_GUIDES.resize(1);
  job.MODEL.VESSELS.resize(2);
  job.MODEL.DAMPER_ELEMENTS = {1, 2};
  job.RUN.NUM_PIP_CONNECTIONS = 2;
  job.RUN.NUM_CLASH_PAIRS = 3;
  job.RUN.TAIL_PAIR_COUNT_A = 1;
  job.RUN.TAIL_PAIR_COUNT_B = 2;
  job.RUN.AUX_ELEMENT_RESULT_SETS = 2;
  job.RUN.OUTPUT_FLAGS.fill(1);
  return job;
}

TEST(FrameWords, EveryWordHoldsAValueThatNamesIt) {
  const JOB job = EVERY_SECTION(3);
  const header::HEADER_VARIABLES v = job.WRITTEN_RUN();
  std::set<float> seen;
  for (const FILE_KIND kind : {FILE_KIND::MOTION, FILE_KIND::FORCE}) {
    const FILE_IMAGE image = job.IMAGE(kind);
    const FRAME_LAYOUT layout = job.FRAME_SECTIONS(kind);
    const int64_t words = FRAME_WORDS(layout);
    EXPECT_EQ(FRAME_SECTIONS(kind, job.COUNTED_RUN()).size(), kind == FILE_KIND::MOTION ? 13U : 26U);
    for (int32_t n = 1; n <= 3; ++n) {
      for (int64_t k = 1; k <= words; ++k) {
        const float value = WORD(image, 8 * v.RESULT_START_RECORD + (n - 1) * words + k);
        const FRAME_WORD word = WORD_AT(layout, n, k);
        ASSERT_EQ(value, job.VALUE(word)) << word;
        ASSERT_EQ(job.WORD_NUMBER(word), 8 * v.RESULT_START_RECORD + (n - 1) * words + k) << word;
        if ((word.SECTION == K::MOTION_STEP_RECORD || word.SECTION == K::FORCE_STEP_RECORD) &&
            word.COMPONENT == STEP_WORD::TIME) {
          EXPECT_EQ(value, job.STEP_TIME(n));
          continue;
        }
        EXPECT_NE(value, 0.0F) << word;
        EXPECT_TRUE(seen.insert(value).second) << word << " repeats " << value;
        EXPECT_EQ(job.WORD_OF_DEFAULT(value), word) << value;
      }
    }
  }
  EXPECT_EQ(job.WORD_OF_DEFAULT(0.0F), std::nullopt);
  EXPECT_EQ(job.WORD_OF_DEFAULT(2.5F), std::nullopt);
  EXPECT_EQ(job.WORD_OF_DEFAULT(1.0e7F), std::nullopt) << "past the frames of three steps";

  // A long run is written frame by frame into the image; its last frame is whole.
  JOB run;
  run.RUN.NUM_TIME_STEPS = 100'000;
  run.MODEL.NODES.resize(2);
  FLAGS(run, {1});
  run.RESULTS.SET(K::DISPLACEMENT, 100'000, 2, 3, 4.5F);
  const FILE_IMAGE image = run.IMAGE(FILE_KIND::MOTION);
  const int64_t records = run.WRITTEN_RUN().MOTION_STEP_RECORDS;
  EXPECT_EQ(image.RECORDS(), run.WRITTEN_RUN().RESULT_START_RECORD + 100'000 * records);
  EXPECT_EQ(WORD(image, 8 * image.RECORDS()),
            run.VALUE(WORD_AT(run.FRAME_SECTIONS(FILE_KIND::MOTION), 100'000, 8 * records)));
  EXPECT_EQ(WORD(image, run.WORD_NUMBER({K::DISPLACEMENT, 100'000, 2, 3})), 4.5F);
}

// Values set by name stand above the frame function, which stands above
// the value that names the word; the frame function is asked once a word.
TEST(FrameValues, ValuesSetByNameAndByTheFrameFunctionAreWritten) {
  JOB job = EVERY_SECTION(8);
  job.RESULTS.SET(K::DISPLACEMENT, 7, 3, 2, 1.25F).SET(K::ELEMENT_24, 8, 2, 3, 12.5F);
  job.RESULTS.SET(K::FORCE_STEP_RECORD, 5, 1, STEP_WORD::TIME, 99.0F);
  int64_t calls = 0;
  job.FRAME_VALUE = [&calls](const FRAME_WORD& w) -> std::optional<float> {
    ++calls;
    if (w.SECTION != K::NODE_CONTACT || w.COMPONENT != 8) return std::nullopt;
    return static_cast<float>(1000 * w.STEP + w.ENTRY);
  };
  job.RESULTS.SET(K::NODE_CONTACT, 6, 1, 8, -1.0F);
  const FILE_IMAGE motion = job.IMAGE(FILE_KIND::MOTION);
  const FILE_IMAGE force = job.IMAGE(FILE_KIND::FORCE);
  EXPECT_EQ(calls, 8 * (FRAME_WORDS(job.FRAME_SECTIONS(FILE_KIND::MOTION)) +
                        FRAME_WORDS(job.FRAME_SECTIONS(FILE_KIND::FORCE))));
  const auto at = [&](const FILE_IMAGE& image, const FRAME_WORD& w) { return WORD(image, job.WORD_NUMBER(w)); };
  EXPECT_EQ(at(motion, {K::DISPLACEMENT, 7, 3, 2}), 1.25F);
  EXPECT_EQ(at(motion, {K::DISPLACEMENT, 6, 3, 2}), job.VALUE({K::DISPLACEMENT, 6, 3, 2})) << "a step not set";
  EXPECT_EQ(at(force, {K::ELEMENT_24, 8, 2, 3}), 12.5F);
  EXPECT_EQ(at(force, {K::FORCE_STEP_RECORD, 5, 1, STEP_WORD::TIME}), 99.0F);
  EXPECT_EQ(at(motion, {K::NODE_CONTACT, 5, 2, 8}), 5002.0F);
  EXPECT_EQ(at(motion, {K::NODE_CONTACT, 6, 1, 8}), -1.0F);
  EXPECT_EQ(at(motion, {K::NODE_CONTACT, 6, 2, 7}), job.VALUE({K::NODE_CONTACT, 6, 2, 7}));
}

TEST(FrameValues, AWordTheFramesDoNotHoldIsRefused) {
  JOB job;
  job.RUN.NUM_TIME_STEPS = 2;
  job.MODEL.NODES.resize(3);  // 18 words in 24
  FLAGS(job, {1});
  const std::vector<FRAME_WORD> outside{
      {K::DISPLACEMENT, 1, 1, 7},   // past the 6 words of an entry
      {K::DISPLACEMENT, 1, 5, 1},   // past the section's records
      {K::DISPLACEMENT, 1, 0, 1},   // entries count from 1
      {K::DISPLACEMENT, 3, 1, 1},   // a step the job does not have
      {K::DISPLACEMENT, 0, 1, 1},
      {K::VELOCITY, 1, 1, 1},       // a section the frames do not hold
      {K::MOTION_STEP_RECORD, 1, 2, 1}};
  for (const FRAME_WORD& word : outside) {
    EXPECT_THROW(job.VALUE(word), std::out_of_range) << word;
    JOB set = job;
    set.RESULTS.SET(word, 1.0F);
    EXPECT_THROW(set.IMAGE(word.FILE()), std::invalid_argument) << word;
  }
  // The words behind the last entry are the section's own: entry 4 of 24 words.
  EXPECT_NO_THROW(job.VALUE({K::DISPLACEMENT, 2, 4, 6}));
  // With the start record set no frames are written.
  job.RUN.RESULT_START_RECORD = 40;
  EXPECT_THROW(job.VALUE({K::DISPLACEMENT, 1, 1, 1}), std::out_of_range);
  job.RESULTS.SET(K::DISPLACEMENT, 1, 1, 1, 2.0F);
  EXPECT_THROW(job.IMAGE(FILE_KIND::MOTION), std::invalid_argument);
  EXPECT_NO_THROW(job.IMAGE(FILE_KIND::FORCE));
}

}  // namespace
}  // namespace tmrdar::builder
