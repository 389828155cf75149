// The result frames as the builder writes them: the walk of a frame's
// sections against layouts counted by hand, the value of its own that every
// word holds, the readers of the results library finding each section's
// words where the builder put them, and values set by name.
#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "builder/job.h"
#include "header/header_test.h"
#include "results/derived_results.h"
#include "results/letter_lookup.h"

namespace tmrdar::builder {

void PrintTo(const FRAME_SECTION& s, std::ostream* out) {
  *out << NAME_OF(s.KIND) << " from " << s.FIRST_WORD << ", " << s.WORDS << " words, " << s.WORDS_PER_ENTRY
       << " an entry, " << s.ENTRIES << " entries";
}

namespace {

using K = SECTION_KIND;

// Word `number` (from 1) of an image.
float WORD(const FILE_IMAGE& image, int64_t number) {
  const auto at = static_cast<std::size_t>(number - 1) * 4;
  std::array<std::byte, 4> raw{};
  std::memcpy(raw.data(), image.BYTES().data() + at, 4);
  uint32_t bits = 0;
  for (int b = 3; b >= 0; --b) bits = (bits << 8) | static_cast<uint32_t>(raw[static_cast<std::size_t>(b)]);
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

TEST(FrameWalk, MotionSectionsStandInFileOrderAsCountedByHand) {
  JOB job;
  job.MODEL.NODES.resize(3);  // 18 nodal words: 3 records
  job.MODEL.ZERO_GAP_GUIDES.resize(2);
  job.MODEL.AUX_NODES.resize(1);
  job.MODEL.AUX_ELEMENTS.resize(9);  // 2 records a set
  job.MODEL.VESSELS.resize(2);
  job.RUN.TAIL_PAIR_COUNT_A = 1;
  job.RUN.AUX_ELEMENT_RESULT_SETS = 2;
  FLAGS(job, {1, 3});
  const FRAME_LAYOUT expected{
      {K::DISPLACEMENT, 1, 24, 6, 3},  {K::ACCELERATION, 25, 24, 6, 3},   {K::ZERO_GAP_GUIDE, 49, 16, 6, 2},
      {K::NODE_CONTACT, 65, 32, 8, 3}, {K::AUX_NODE, 97, 8, 6, 1},        {K::MOTION_STEP_RECORD, 105, 8, 8, 1},
      {K::VESSEL, 113, 16, 8, 2},      {K::TAIL_ITEM_A, 129, 16, 16, 1},  {K::AUX_ELEMENT_SET, 145, 32, 16, 2}};
  EXPECT_EQ(job.FRAME_SECTIONS(FILE_KIND::MOTION), expected);
  EXPECT_EQ(job.MOTION_FRAME_RECORDS(), 22);

  // Guides, clash pairs and the other tail items: each section behind them moves.
  job.MODEL.GUIDE_SURFACES.resize(1);
  job.RUN.NUM_CLASH_PAIRS = 9;
  job.RUN.TAIL_PAIR_COUNT_B = 3;
  const FRAME_LAYOUT more = job.FRAME_SECTIONS(FILE_KIND::MOTION);
  EXPECT_EQ(KINDS(more), (std::vector<K>{K::DISPLACEMENT, K::ACCELERATION, K::GUIDE_SURFACE, K::ZERO_GAP_GUIDE,
                                         K::NODE_CONTACT, K::CLASHING, K::AUX_NODE, K::MOTION_STEP_RECORD, K::VESSEL,
                                         K::TAIL_ITEM_A, K::TAIL_ITEM_B, K::AUX_ELEMENT_SET}));
  EXPECT_EQ(*FIND_SECTION(more, K::GUIDE_SURFACE), (FRAME_SECTION{K::GUIDE_SURFACE, 49, 16, 9, 1}));
  EXPECT_EQ(*FIND_SECTION(more, K::CLASHING), (FRAME_SECTION{K::CLASHING, 113, 16, 1, 9}));
  EXPECT_EQ(*FIND_SECTION(more, K::TAIL_ITEM_B), (FRAME_SECTION{K::TAIL_ITEM_B, 177, 48, 16, 3}));
  EXPECT_EQ(job.MOTION_FRAME_RECORDS(), 22 + 2 + 2 + 6);
  // The tail ends the frame: the step record stands 8 words a vessel, 16 a
  // tail item and 8 a record of the sets before the frame's last word.
  EXPECT_EQ(FIND_SECTION(more, K::MOTION_STEP_RECORD)->LAST_WORD(), 8 * 32 - 8 * 2 - 16 * (1 + 3) - 8 * 2 * 2);
}

TEST(FrameWalk, ForceSectionsStandInFileOrderAsCountedByHand) {
  JOB job;
  job.MODEL.ELEMENTS.resize(3);  // R3 = 2 records
  job.MODEL.BOUNDARY_CONDITIONS = {1};
  job.MODEL.GUIDE_SURFACES.resize(1);
  job.RUN.NUM_PIP_CONNECTIONS = 2;
  job.RUN.NUM_CLASH_PAIRS = 3;
  job.MODEL.DAMPER_ELEMENTS = {4, 5};
  FLAGS(job, {4, 5, 7, 16, 17, 18});
  const FRAME_LAYOUT expected{{K::REACTION, 1, 8, 6, 1},
                              {K::ELEMENT_9, 9, 16, 3, 3},
                              {K::ELEMENT_11, 25, 16, 3, 3},
                              {K::GUIDE_SURFACE_REACTION, 41, 8, 3, 1},
                              {K::PIP_REACTION, 49, 8, 3, 2},
                              {K::CLASH_FORCE, 57, 8, 2, 3},
                              {K::PRESSURE, 65, 24, 6, 3},
                              {K::ELEMENT_37, 89, 16, 3, 3},
                              {K::ELEMENT_38, 105, 16, 3, 3},
                              {K::ELEMENT_39, 121, 16, 3, 3},
                              {K::SPARE_RECORD, 137, 8, 8, 1},
                              {K::ELEMENT_36, 145, 8, 1, 3},
                              {K::FORCE_STEP_RECORD, 153, 8, 8, 1},
                              {K::DAMPER, 161, 16, 8, 2}};
  EXPECT_EQ(job.FRAME_SECTIONS(FILE_KIND::FORCE), expected);
  EXPECT_EQ(job.FORCE_FRAME_RECORDS(), 22);
  EXPECT_EQ(FIND_SECTION(job.FRAME_SECTIONS(FILE_KIND::FORCE), K::FORCE_STEP_RECORD)->LAST_WORD(), 8 * 22 - 8 * 2);

  // Flag 19's two sub-sections follow flag 18's three; temperatures stand
  // behind the contact sections and ahead of the pressures.
  FLAGS(job, {15, 19});
  const FRAME_LAYOUT all = job.FRAME_SECTIONS(FILE_KIND::FORCE);
  EXPECT_EQ(*FIND_SECTION(all, K::TEMPERATURE), (FRAME_SECTION{K::TEMPERATURE, 65, 16, 3, 3}));
  EXPECT_EQ(FIND_SECTION(all, K::ELEMENT_40)->FIRST_WORD, 153);
  EXPECT_EQ(FIND_SECTION(all, K::ELEMENT_41)->FIRST_WORD, 169);
  EXPECT_EQ(FIND_SECTION(all, K::SPARE_RECORD)->FIRST_WORD, 185);
  EXPECT_EQ(job.FORCE_FRAME_RECORDS(), 22 + 2 + 4);
}

TEST(FrameWalk, EachFormatsFramesAsCountedByHand) {
  // 3 nodes: 18 displacement words in 3 records, 24 node contact words in 4
  // or 21 in 3 (7 a node); one record for no auxiliary nodes, the step
  // record, a vessel, a tail item of 2 records (none without block 2), a set
  // of 9 auxiliary elements in 2 (none without block 13). Force frame of 2
  // elements: reactions of no boundary conditions 1 record, flag 5's section
  // 1, then in V861 flags 18 and 19 (5), the spare record, flag 17 (1), the
  // step record and 2 dampers; elsewhere the step record alone. Headers:
  // Element Data at 25, 17, 15, 14 and 41 model records behind it, then 4
  // records of blocks 46 to 51 in V861, 6 + 1 of blocks 46 and 47 in V821 to
  // V841.
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
    EXPECT_EQ(*FIND_SECTION(motion, K::NODE_CONTACT),
              (FRAME_SECTION{K::NODE_CONTACT, 25, row.CONTACT_WORDS, row.CONTACT_WORDS_A_NODE, 3}));
    EXPECT_EQ(FIND_SECTION(motion, K::MOTION_STEP_RECORD)->LAST_WORD(), row.MOTION_STEP_LAST);
    EXPECT_EQ(job.MOTION_FRAME_RECORDS(), row.MOTION_RECORDS);
    const FRAME_LAYOUT force = job.FRAME_SECTIONS(FILE_KIND::FORCE);
    EXPECT_EQ(FIND_SECTION(force, K::FORCE_STEP_RECORD)->LAST_WORD(), row.FORCE_STEP_LAST);
    EXPECT_EQ(job.FORCE_FRAME_RECORDS(), row.FORCE_RECORDS);
    if (row.FORMAT != &header::V861) {
      EXPECT_EQ(KINDS(force), (std::vector<K>{K::REACTION, K::ELEMENT_9, K::FORCE_STEP_RECORD}));
    }

    const header::HEADER_VARIABLES v = job.WRITTEN_RUN();
    EXPECT_EQ(v.RESULT_START_RECORD, row.HEADER);
    EXPECT_EQ(v.MOTION_STEP_RECORDS, row.MOTION_RECORDS);
    EXPECT_EQ(v.FORCE_STEP_RECORDS, row.FORCE_RECORDS);
    // The time of step 2 where its frame's step record stands, in both files.
    const FILE_IMAGE motion_file = job.IMAGE(FILE_KIND::MOTION);
    EXPECT_EQ(motion_file.RECORDS(), row.HEADER + 2 * row.MOTION_RECORDS);
    EXPECT_EQ(WORD(motion_file, 8 * (row.HEADER + row.MOTION_RECORDS) + row.MOTION_STEP_LAST - 7), 1.5F);
    const FILE_IMAGE force_file = job.IMAGE(FILE_KIND::FORCE);
    EXPECT_EQ(force_file.RECORDS(), row.HEADER + 2 * row.FORCE_RECORDS);
    EXPECT_EQ(WORD(force_file, 8 * (row.HEADER + row.FORCE_RECORDS) + row.FORCE_STEP_LAST - 7), 1.5F);
  }
}

TEST(FrameWalk, FlagsMultiplyTheirSectionsAndTestedCountsOfNoneTakeNoRecord) {
  JOB job;
  job.MODEL.NODES.resize(2);
  job.RUN.NUM_GUIDE_SURFACES = 0;
  job.RUN.NUM_CLASH_PAIRS = 0;
  job.RUN.OUTPUT_FLAGS[1] = 1;  // velocities without displacements
  FRAME_LAYOUT motion = job.FRAME_SECTIONS(FILE_KIND::MOTION);
  EXPECT_EQ(motion.front(), (FRAME_SECTION{K::VELOCITY, 1, 16, 6, 2}));
  EXPECT_EQ(KINDS(motion), (std::vector<K>{K::VELOCITY, K::NODE_CONTACT, K::AUX_NODE, K::MOTION_STEP_RECORD}));

  // No nodes: the velocities and the node contact section still take a
  // record each, as the auxiliary node section does without auxiliary nodes.
  job.MODEL.NODES.clear();
  motion = job.FRAME_SECTIONS(FILE_KIND::MOTION);
  EXPECT_EQ(motion[1], (FRAME_SECTION{K::NODE_CONTACT, 9, 8, 8, 0}));
  EXPECT_EQ(job.MOTION_FRAME_RECORDS(), 4);

  // Contact sections under flag 4 = 0 take nothing whatever their counts;
  // an element section under a flag of 2 takes two sections' records.
  job.MODEL.ELEMENTS.resize(1);
  job.MODEL.GUIDE_SURFACES.resize(2);
  job.RUN.NUM_CLASH_PAIRS = 4;
  job.RUN.OUTPUT_FLAGS[5] = 2;
  EXPECT_EQ(job.FRAME_SECTIONS(FILE_KIND::FORCE),
            (FRAME_LAYOUT{{K::ELEMENT_10, 1, 16, 3, 1},
                          {K::SPARE_RECORD, 17, 8, 8, 1},
                          {K::FORCE_STEP_RECORD, 25, 8, 8, 1}}));
  // With flag 4 the reactions of no boundary conditions take a record.
  job.RUN.OUTPUT_FLAGS[3] = 1;
  EXPECT_EQ(KINDS(job.FRAME_SECTIONS(FILE_KIND::FORCE)),
            (std::vector<K>{K::REACTION, K::ELEMENT_10, K::GUIDE_SURFACE_REACTION, K::CLASH_FORCE, K::SPARE_RECORD,
                            K::FORCE_STEP_RECORD}));

  job.RUN.OUTPUT_FLAGS[5] = -1;
  EXPECT_THROW(job.FRAME_SECTIONS(FILE_KIND::FORCE), std::invalid_argument);
  EXPECT_THROW(job.IMAGE(FILE_KIND::FORCE), std::invalid_argument);
}

TEST(FrameWalk, SectionsTakeWholeRecordsByTheSinglePrecisionRule) {
  struct CASE {
    int32_t count;
    int64_t records;
  };
  // Clash pairs, one word each: 7 words take 1 record, 8 take 2, 9 take 2,
  // 16 take 3; past 2^24 words the count is rounded to a 32-bit real first.
  for (const CASE c : {CASE{1, 1}, CASE{7, 1}, CASE{8, 2}, CASE{9, 2}, CASE{16, 3}, CASE{16'777'231, 2'097'155}}) {
    JOB job;
    job.RUN.NUM_CLASH_PAIRS = c.count;
    EXPECT_EQ(FIND_SECTION(job.FRAME_SECTIONS(FILE_KIND::MOTION), K::CLASHING)->RECORDS(), c.records) << c.count;
  }
  // Node contact: 8 nodes make 64 words in 9 records; 4 degrees of freedom
  // of 2 nodes make 8 displacement words in 2.
  JOB job;
  job.RUN.NUM_NODES = 8;
  EXPECT_EQ(FIND_SECTION(job.FRAME_SECTIONS(FILE_KIND::MOTION), K::NODE_CONTACT)->RECORDS(), 9);
  job.RUN.NUM_NODES = 2;
  job.RUN.DOFS_PER_NODE = 4;
  FLAGS(job, {1});
  EXPECT_EQ(job.FRAME_SECTIONS(FILE_KIND::MOTION).front(), (FRAME_SECTION{K::DISPLACEMENT, 1, 16, 4, 2}));
  // Auxiliary element sets of 8 elements: 2 records a set.
  job.RUN.NUM_AUX_ELEMENTS = 8;
  job.RUN.AUX_ELEMENT_RESULT_SETS = 3;
  EXPECT_EQ(job.FRAME_SECTIONS(FILE_KIND::MOTION).back(), (FRAME_SECTION{K::AUX_ELEMENT_SET, 57, 48, 16, 3}));
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
        if (word.SECTION == K::MOTION_STEP_RECORD || word.SECTION == K::FORCE_STEP_RECORD) {
          if (word.COMPONENT == STEP_WORD::TIME) {
            EXPECT_EQ(value, job.STEP_TIME(n));
            continue;
          }
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
}

// The readers of the results library, each with its own word arithmetic,
// find in every section the value that the builder says it put there.
class ReadersOfTheFrames : public header::HEADER_TEST {
 protected:
  void OPEN(const JOB& job) { ASSERT_FALSE(OPEN_WRITTEN(job)) << ERROR_HANDLING::LAST_MESSAGE(); }
  float LETTER(int32_t n, int32_t element, int32_t entry, int32_t parameter, char letter) {
    float value = 0.0F;
    bool error = true;
    results::DABFND(db, n, element, entry, parameter, letter, value, error);
    EXPECT_FALSE(error) << letter << " " << ERROR_HANDLING::LAST_MESSAGE();
    return value;
  }
  // A reader of (step, entry, component or location) with a status.
  float DERIVED(void (*read)(header::TIDE3_DATABASE_FILES&, int32_t, int32_t, int32_t, float&, int32_t&), int32_t n,
                int32_t entry, int32_t component) {
    float value = 0.0F;
    int32_t status = -1;
    read(db, n, entry, component, value, status);
    EXPECT_EQ(status, 0) << ERROR_HANDLING::LAST_MESSAGE();
    return value;
  }
};

TEST_F(ReadersOfTheFrames, EverySectionOfBothFiles) {
  const JOB job = EVERY_SECTION(2);
  OPEN(job);
  const auto value = [&](K section, int32_t n, int64_t entry, int32_t component) {
    return job.VALUE({section, n, entry, component});
  };
  struct BY_LETTER {
    char letter;
    K section;
    int32_t entries, components;
  };
  const std::vector<BY_LETTER> letters{{'D', K::DISPLACEMENT, 3, 6}, {'V', K::VELOCITY, 3, 6},
                                       {'A', K::ACCELERATION, 3, 6}, {'R', K::REACTION, 2, 6},
                                       {'G', K::GUIDE_SURFACE, 2, 9},  {'H', K::ZERO_GAP_GUIDE, 1, 6},
                                       {'C', K::NODE_CONTACT, 3, 8},   {'K', K::AUX_NODE, 2, 3}};
  using READER = void (*)(header::TIDE3_DATABASE_FILES&, int32_t, int32_t, int32_t, float&, int32_t&);
  struct BY_READER {
    READER read;
    K section;
    int32_t entries;
  };
  const std::vector<BY_READER> readers{{results::CALCULATE_CONTACT_REACTIONS, K::GUIDE_SURFACE_REACTION, 2},
                                       {results::CALCULATE_ZG_GUIDE_REACTIONS, K::ZERO_GAP_GUIDE_REACTION, 1},
                                       {results::CALCULATE_PIP_REACTIONS, K::PIP_REACTION, 2},
                                       {results::RETRIEVE_ELEMENT_TEMPERATURE, K::TEMPERATURE, 2}};
  for (int32_t n = 1; n <= 2; ++n) {
    for (const BY_LETTER& c : letters) {
      for (int32_t i = 1; i <= c.entries; ++i) {
        for (int32_t p = 1; p <= c.components; ++p) {
          EXPECT_EQ(LETTER(n, 0, i, p, c.letter), value(c.section, n, i, p)) << c.letter << " " << i << " " << p;
        }
      }
    }
    for (const BY_READER& c : readers) {
      for (int32_t i = 1; i <= c.entries; ++i) {
        for (int32_t p = 1; p <= 3; ++p) EXPECT_EQ(DERIVED(c.read, n, i, p), value(c.section, n, i, p));
      }
    }
    for (int32_t p = 1; p <= 6; ++p) {
      for (int32_t vessel = 1; vessel <= 2; ++vessel) {
        EXPECT_EQ(LETTER(n, vessel, 0, 0, "XYZO12"[p - 1]), value(K::VESSEL, n, vessel, p));
      }
    }
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'T'), job.STEP_TIME(n));
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'S'), value(K::MOTION_STEP_RECORD, n, 1, STEP_WORD::SURFACE_ELEVATION));
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'P'), value(K::MOTION_STEP_RECORD, n, 1, STEP_WORD::P));
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'B'), value(K::MOTION_STEP_RECORD, n, 1, STEP_WORD::B));
    for (int32_t e = 1; e <= 2; ++e) {
      for (int32_t l = 1; l <= 3; ++l) {
        for (const int32_t fp : {9, 10, 11, 12, 13, 14, 15, 24, 25}) {
          EXPECT_EQ(LETTER(n, e, l, fp, 'E'), value(ELEMENT_SECTION(fp), n, e, l)) << fp;
        }
        for (int32_t k = 1; k <= 2; ++k) {
          float read = 0.0F;
          int32_t status = -1;
          results::RETRIEVE_ELEMENT_PRESSURES(db, n, e, l, k, read, status);
          EXPECT_EQ(read, value(K::PRESSURE, n, e, 2 * (l - 1) + k));
        }
      }
    }
    // Clash code 1 reads the motion frame, 2 and 3 the pair's two force words.
    for (int32_t i = 1; i <= 3; ++i) {
      EXPECT_EQ(DERIVED(results::RETRIEVE_CLASHING_RESULTS, n, i, 1), value(K::CLASHING, n, i, 1));
      EXPECT_EQ(DERIVED(results::RETRIEVE_CLASHING_RESULTS, n, i, 2), value(K::CLASH_FORCE, n, i, 1));
      EXPECT_EQ(DERIVED(results::RETRIEVE_CLASHING_RESULTS, n, i, 3), value(K::CLASH_FORCE, n, i, 2));
    }
  }
}

// Without contact sections the element sections of flags 17 to 19 stand
// where the element force lookup addresses them; without a motion file the
// step words come from the force frame, the time and letter S from its step
// record and letters P and B from the last damper record.
TEST_F(ReadersOfTheFrames, FlagSeventeenToNineteenAndTheForceStepRecord) {
  JOB job = EVERY_SECTION(2);
  job.MODEL.GUIDE_SURFACES.clear();
  job.MODEL.ZERO_GAP_GUIDES.clear();
  job.RUN.NUM_PIP_CONNECTIONS = 0;
  job.RUN.NUM_CLASH_PAIRS = 0;
  job.MOTION.PRESENT = false;
  job.STEP_TIMES = {7.5F, 8.5F};
  OPEN(job);
  EXPECT_EQ(db.TABLES.TIME_LIST.DATA(), job.STEP_TIMES);
  for (int32_t n = 1; n <= 2; ++n) {
    for (int32_t e = 1; e <= 2; ++e) {
      for (int32_t l = 1; l <= 3; ++l) {
        for (const int32_t fp : {28, 37, 38, 39, 40, 41}) {
          float read = 0.0F;
          bool error = true;
          results::READF(db, n, e, l, fp, read, error);
          EXPECT_FALSE(error);
          EXPECT_EQ(read, job.VALUE({ELEMENT_SECTION(fp), n, e, l})) << fp;
        }
      }
      float read = 0.0F;
      bool error = true;
      results::READF(db, n, e, 2, 36, read, error);
      EXPECT_EQ(read, job.VALUE({K::ELEMENT_36, n, e, 1}));
    }
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'S'), job.VALUE({K::FORCE_STEP_RECORD, n, 1, STEP_WORD::SURFACE_ELEVATION}));
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'T'), job.VALUE({K::DAMPER, n, 2, 1}));
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'P'), job.VALUE({K::DAMPER, n, 2, 3}));
    EXPECT_EQ(LETTER(n, 0, 0, 0, 'B'), job.VALUE({K::DAMPER, n, 2, 5}));
  }
}

TEST_F(ReadersOfTheFrames, ValuesSetByNameAreReadBack) {
  JOB job = EVERY_SECTION(8);
  job.RESULTS.SET(K::DISPLACEMENT, 7, 3, 2, 1.25F);
  job.RESULTS.SET(K::REACTION, 2, 1, 6, -40.0F).SET(K::ELEMENT_24, 8, 2, 3, 12.5F).SET(K::PRESSURE, 1, 2, 6, 3.0F);
  job.RESULTS.SET(K::MOTION_STEP_RECORD, 4, 1, STEP_WORD::SURFACE_ELEVATION, 0.75F);
  job.RESULTS.SET(K::MOTION_STEP_RECORD, 5, 1, STEP_WORD::TIME, 99.0F);
  job.RESULTS.SET(K::VESSEL, 3, 2, 4, -0.5F);
  // The frame function gives node contact word 8 its node and step; it
  // leaves the rest, and set values stand above it.
  int64_t calls = 0;
  job.FRAME_VALUE = [&calls](const FRAME_WORD& w) -> std::optional<float> {
    ++calls;
    if (w.SECTION != K::NODE_CONTACT || w.COMPONENT != 8) return std::nullopt;
    return static_cast<float>(1000 * w.STEP + w.ENTRY);
  };
  job.RESULTS.SET(K::NODE_CONTACT, 6, 1, 8, -1.0F);
  OPEN(job);
  EXPECT_EQ(calls, 8 * (FRAME_WORDS(job.FRAME_SECTIONS(FILE_KIND::MOTION)) +
                        FRAME_WORDS(job.FRAME_SECTIONS(FILE_KIND::FORCE))))
      << "one call a word of each file's frames";

  EXPECT_EQ(LETTER(7, 0, 3, 2, 'D'), 1.25F);
  EXPECT_EQ(LETTER(6, 0, 3, 2, 'D'), job.VALUE({K::DISPLACEMENT, 6, 3, 2})) << "a step that was not set";
  EXPECT_EQ(LETTER(2, 0, 1, 6, 'R'), -40.0F);
  EXPECT_EQ(LETTER(8, 2, 3, 24, 'E'), 12.5F);
  float pressure = 0.0F;
  int32_t status = -1;
  results::RETRIEVE_ELEMENT_PRESSURES(db, 1, 2, 3, 2, pressure, status);
  EXPECT_EQ(pressure, 3.0F);
  EXPECT_EQ(LETTER(4, 0, 0, 0, 'S'), 0.75F);
  EXPECT_EQ(db.TABLES.TIME_LIST(5), 99.0F) << "a set time replaces the step's own";
  EXPECT_EQ(db.TABLES.TIME_LIST(4), job.STEP_TIME(4));
  EXPECT_EQ(LETTER(3, 2, 0, 0, 'O'), -0.5F);
  EXPECT_EQ(LETTER(5, 0, 2, 8, 'C'), 5002.0F);
  EXPECT_EQ(LETTER(6, 0, 1, 8, 'C'), -1.0F);
  EXPECT_EQ(job.VALUE({K::NODE_CONTACT, 6, 1, 8}), -1.0F);
  EXPECT_EQ(job.VALUE({K::NODE_CONTACT, 6, 2, 8}), 6002.0F);
  EXPECT_EQ(LETTER(6, 0, 2, 7, 'C'), job.VALUE({K::NODE_CONTACT, 6, 2, 7}));
  EXPECT_TRUE(job.WORD_OF_DEFAULT(job.VALUE({K::NODE_CONTACT, 6, 2, 7})).has_value());
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
      {K::DAMPER, 1, 1, 1},
      {K::MOTION_STEP_RECORD, 1, 2, 1}};
  for (const FRAME_WORD& word : outside) {
    EXPECT_THROW(job.VALUE(word), std::out_of_range) << word;
    JOB set = job;
    set.RESULTS.SET(word, 1.0F);
    EXPECT_THROW(set.IMAGE(word.FILE()), std::invalid_argument) << word;
  }
  // The words behind the last entry are the section's own: entry 4,
  // components 1 to 6 of which 1 to 6 lie within its 24 words.
  EXPECT_NO_THROW(job.VALUE({K::DISPLACEMENT, 2, 4, 6}));
  // With the start record set no frames are written.
  job.RUN.RESULT_START_RECORD = 40;
  EXPECT_THROW(job.VALUE({K::DISPLACEMENT, 1, 1, 1}), std::out_of_range);
  job.RESULTS.SET(K::DISPLACEMENT, 1, 1, 1, 2.0F);
  EXPECT_THROW(job.IMAGE(FILE_KIND::MOTION), std::invalid_argument);
  EXPECT_NO_THROW(job.IMAGE(FILE_KIND::FORCE));
}

// A long run is written frame by frame into the image; its last frame is whole.
TEST(FrameValues, AHundredThousandStepsAreWrittenWhole) {
  JOB job;
  job.RUN.NUM_TIME_STEPS = 100'000;
  job.MODEL.NODES.resize(2);
  job.MODEL.ELEMENTS.resize(1);
  job.MODEL.GUIDE_SURFACES.resize(1);
  FLAGS(job, {1, 4, 5});
  job.RESULTS.SET(K::DISPLACEMENT, 100'000, 2, 3, 4.5F);
  const header::HEADER_VARIABLES v = job.WRITTEN_RUN();
  for (const FILE_KIND kind : {FILE_KIND::MOTION, FILE_KIND::FORCE}) {
    const FILE_IMAGE image = job.IMAGE(kind);
    const int64_t records = kind == FILE_KIND::MOTION ? v.MOTION_STEP_RECORDS : v.FORCE_STEP_RECORDS;
    EXPECT_EQ(image.RECORDS(), v.RESULT_START_RECORD + 100'000 * records);
    const K step_record = kind == FILE_KIND::MOTION ? K::MOTION_STEP_RECORD : K::FORCE_STEP_RECORD;
    EXPECT_EQ(WORD(image, job.WORD_NUMBER({step_record, 100'000, 1, 1})), job.STEP_TIME(100'000));
    const int64_t last = 8 * image.RECORDS();
    EXPECT_EQ(WORD(image, last), job.VALUE(WORD_AT(job.FRAME_SECTIONS(kind), 100'000, 8 * records)));
    if (kind == FILE_KIND::MOTION) {
      EXPECT_EQ(WORD(image, job.WORD_NUMBER({K::DISPLACEMENT, 100'000, 2, 3})), 4.5F);
    }
  }
}

}  // namespace
}  // namespace tmrdar::builder
