// Where the blocks of a header stand in the formats without a directory:
// a walk over the blocks by title, or a table of addresses computed from the
// counts. Addresses are 0-based records; block k (numbered as in the newest
// format's directory) starts at byte 32 * address + 1.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "header/common_database.h"
#include "header/format_version.h"

namespace tmrdar::header {

// The first model block, Element Data: three records behind the title's first.
int64_t element_data_record(const FormatVersion& version);

// The title of block k (16 to the format's last) in the format's own
// numbering, e.g. "Block 13 - Element Data." for block 16 of V811; empty for
// a block that has none.
std::string block_title(const FormatVersion& version, int32_t k);

// Records that block k takes in the format: those of the newest format, with
// the format's own guide surface and target spectrum records, and in a
// computed address table the two blocks ahead of its last.
int64_t format_block_records(const FormatVersion& version, int32_t k, const common_database::BlockCounts& counts);

// The address of the block whose title is `title` (letter case and trailing
// blanks aside): the walk starts at Element Data and adds each block's
// records until the title matches; a title that matches none gives the
// address behind the format's last block. An address beyond 32 bits is none
// and gives -1.
void get_header_address(const FormatVersion& version, std::string_view title,
                              const common_database::BlockCounts& counts, int32_t& address);

// Fills the whole table of 48 addresses from the counts: blocks 1 to 15 at
// records 0 to 14 and Element Data at 17, then every block behind the one
// before it. `total`, when given, receives the record behind the header: the
// last block's address and the records of the binary data. Addresses beyond
// 32 bits are -1.
inline constexpr int32_t num_computed_addresses = 48;
void v841_set_block_addresses(const FormatVersion& version, const common_database::BlockCounts& counts,
                              common_database::BlockAddresses& blocks, int64_t* total = nullptr);

}  // namespace tmrdar::header
