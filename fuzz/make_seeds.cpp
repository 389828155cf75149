// Writes the seed corpora of the fuzz targets into <directory>/<target>/:
// the small job of every format, both files and each alone, for the open;
// every format with no change and with a few requests for the requests;
// the seabed examples and lines of numbers and words for the text readers.
//
//   make_seeds DIRECTORY SEABED_EXAMPLES_DIRECTORY
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "builder/job.h"
#include "fuzz_support.h"

using namespace tmrdar;

namespace {

void write_seed(const std::filesystem::path& path, const std::vector<uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::vector<uint8_t> as_bytes(const std::vector<std::byte>& image) {
  std::vector<uint8_t> bytes(image.size());
  for (std::size_t i = 0; i < image.size(); ++i) bytes[i] = static_cast<uint8_t>(image[i]);
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_seeds DIRECTORY SEABED_EXAMPLES_DIRECTORY\n");
    return 2;
  }
  const std::filesystem::path root = argv[1];
  for (const char* target : {"fuzz_open", "fuzz_requests", "fuzz_text"}) std::filesystem::create_directories(root / target);

  for (std::size_t k = 0; k < header::format_versions.size(); ++k) {
    const header::FormatVersion& format = *header::format_versions[k];
    const builder::Job job = fuzzing::small_job(format);
    const std::vector<uint8_t> motion = as_bytes(job.image(builder::FileKind::motion).bytes());
    const std::vector<uint8_t> force = as_bytes(job.image(builder::FileKind::force).bytes());
    const std::string name(format.name);
    // files, query choice count, motion length (both files), the files.
    std::vector<uint8_t> seed{0, 0, 0, 0};
    seed.insert(seed.end(), motion.begin(), motion.end());
    write_seed(root / "fuzz_open" / (name + "-motion"), seed);
    seed = {1, 0, 0, 0};
    seed.insert(seed.end(), force.begin(), force.end());
    write_seed(root / "fuzz_open" / (name + "-force"), seed);
    seed = {2, 0, static_cast<uint8_t>(motion.size() & 0xFF), static_cast<uint8_t>(motion.size() >> 8)};
    seed.insert(seed.end(), motion.begin(), motion.end());
    seed.insert(seed.end(), force.begin(), force.end());
    write_seed(root / "fuzz_open" / (name + "-both"), seed);

    // FuzzedDataProvider takes integral ranges from the end of the input:
    // a short seed picks this format and no change, and the requests read
    // the bytes ahead.
    std::vector<uint8_t> requests(200);
    for (std::size_t i = 0; i < requests.size(); ++i) requests[i] = static_cast<uint8_t>(i * 37 + k);
    // From the end: the format, then for each file no change and no cut.
    const std::size_t end = requests.size();
    requests[end - 1] = static_cast<uint8_t>(k);
    requests[end - 2] = 0;
    requests[end - 3] = 2;
    requests[end - 4] = 0;
    requests[end - 5] = 2;
    write_seed(root / "fuzz_requests" / name, requests);
  }

  for (const auto& entry : std::filesystem::directory_iterator(argv[2])) {
    std::ifstream in(entry.path(), std::ios::binary);
    const std::vector<uint8_t> text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    const bool surface = text.size() > 30 && std::string(text.begin(), text.end()).find("surface") != std::string::npos;
    std::vector<uint8_t> seed{static_cast<uint8_t>(surface ? 1 : 0)};
    seed.insert(seed.end(), text.begin(), text.end());
    write_seed(root / "fuzz_text" / entry.path().filename(), seed);
  }
  const std::vector<std::string> lines{"\x02" "-12.5E3", "\x02" "3*7,", "\x02" "nan(1)", "\x02" "1.5-3",
                                        "\x03" "N\n N=1 2, {riser top} 4e2", "\x03" "SPEED\nSPEED= 1.5, 2.0E40 ,,7",
                                        "\x03" " \n  0x1F  ff"};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    write_seed(root / "fuzz_text" / ("line-" + std::to_string(i)), std::vector<uint8_t>(lines[i].begin(), lines[i].end()));
  }
  return 0;
}
