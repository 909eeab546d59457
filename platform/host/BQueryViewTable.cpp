// The host's session: who works at which workstation on which year-end year,
// and which submission engine the host gives the jobs (ours unless a host or a
// test chooses another).
#include "platform/host/BQueryViewTable.h"

#include <utility>

#include "platform/host/ReferenceEngine.h"

namespace iras {

BQueryViewTable::BQueryViewTable(SessionSettings settings) : settings_(std::move(settings)) {}

void BQueryViewTable::SetEngineFactory(EngineFactory factory) { engineFactory_ = std::move(factory); }

std::unique_ptr<BYESubmissionEngine> BQueryViewTable::CreateSubmissionEngine() {
    if (engineFactory_) return engineFactory_(this);
    return std::make_unique<ReferenceEngine>(this);
}

}  // namespace iras
