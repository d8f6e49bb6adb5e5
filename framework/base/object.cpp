#include "framework/base/object.h"

namespace framework {

TObject::~TObject() = default;

}  // namespace framework
