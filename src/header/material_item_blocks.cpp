#include "header/block_reading.h"

namespace tmrdar::header {

bool TIDE3_DATABASE_FILES::READ_MATERIAL_AND_ITEM_BLOCKS(int32_t& /*flag*/) { return true; }

}  // namespace tmrdar::header
