// The default saving of a log: its lines, written as one whole file.
#include "platform/common/LogSink.h"

#include "platform/common/AtomicFile.h"

namespace iras {

std::string LogSink::SaveTo(const std::filesystem::path& file) { return WriteLinesAtomically(file, Lines(), "\n"); }

}  // namespace iras
