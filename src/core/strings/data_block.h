// The data block: a string of bytes that carries a type and a key, the unit in
// which a keyed binary item travels. The values of both are the business of
// whoever makes the block; the bytes are its string content.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/strings/t_string.h"

namespace tmrdar::MOD_DATA_BLOCK {

class T_DATA_BLOCK : public MOD_STRING::T_STRING {
 public:
  T_DATA_BLOCK() = default;
  using MOD_STRING::T_STRING::T_STRING;
  // Assigning a string or characters replaces the bytes; type and key stay.
  using MOD_STRING::T_STRING::operator=;

  void SET_TYPE(int32_t type) { type_ = type; }
  int32_t GET_TYPE() const { return type_; }
  void SET_KEY(int32_t key) { key_ = key; }
  int32_t GET_KEY() const { return key_; }

 private:
  int32_t type_ = 0;
  int32_t key_ = 0;
};

}  // namespace tmrdar::MOD_DATA_BLOCK
