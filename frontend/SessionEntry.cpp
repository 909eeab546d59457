// The entry's steps: the module right first ("You have no access to this
// module" and no form when refused), then the form over the host's active
// window, modal until the clerk closes it.
#include "frontend/SessionEntry.h"

#include <QApplication>

namespace iras {

std::string OpenSessionForm(BQueryViewTable& session, const std::string& mode, SessionFormServices services) {
    if (!ModuleAccessible(session, services.rights)) {
        if (services.dialogs != nullptr) {
            services.dialogs->Show(MessageKind::Warning, kNoAccessMessage);
        } else {
            QtFormDialogs(QApplication::activeWindow()).Show(MessageKind::Warning, kNoAccessMessage);
        }
        return "";
    }
    TIRASeSubmissionFrontend_Form form(QApplication::activeWindow(), mode, &session, std::move(services));
    form.exec();
    return form.SummaryFilePath();
}

}  // namespace iras
