#include "framework/base/file_functions.h"

namespace framework {

TFileFunctions& FileFunctions() {
    static TFileFunctions functions;
    return functions;
}

}  // namespace framework
