// The data block: a string of bytes that carries a type and a key, the unit in
// which a keyed binary item travels. The values of both are the business of
// whoever makes the block; the bytes are its string content.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/strings/string.h"

namespace tmrdar::data_blocks {

class DataBlock : public strings::String {
 public:
  DataBlock() = default;
  using strings::String::String;
  // Assigning a string or characters replaces the bytes; type and key stay.
  using strings::String::operator=;

  void set_type(int32_t type) { type_ = type; }
  int32_t get_type() const { return type_; }
  void set_key(int32_t key) { key_ = key; }
  int32_t get_key() const { return key_; }

 private:
  int32_t type_ = 0;
  int32_t key_ = 0;
};

}  // namespace tmrdar::data_blocks
