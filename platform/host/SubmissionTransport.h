// The delivery of a checked return file to IRAS. The reference engine sends
// nothing over a network: its default transport only records that the file
// was handed over. A host with a real channel to the authority supplies its
// own transport, and the engine's checks, records and logs stay the same.
#pragma once

#include <filesystem>
#include <string>

namespace iras {

// What the engine knows of a file it is about to deliver.
struct SubmittedFile {
    std::string fileName;
    std::string formType;  // as the job passes it ("CurIR8A" also for a supplementary IR8A)
    std::string submissionType;
    std::string employerId;
    int year = 0;
    std::string userIdType;
    std::string userId;
    std::string submittedAt;  // "YYYY-MM-DD HH:MM:SS"
    long long sizeBytes = 0;
    int recordCount = 0;
};

struct DeliveryResult {
    bool accepted = false;
    std::string reference;  // the authority's acknowledgement, or the local record
    std::string message;    // for the engine's log
};

class SubmissionTransport {
public:
    virtual ~SubmissionTransport() = default;
    virtual DeliveryResult Deliver(const SubmittedFile& file, const std::filesystem::path& path) = 0;
};

// The default: accepts the file without sending it anywhere.
class RecordOnlyTransport : public SubmissionTransport {
public:
    DeliveryResult Deliver(const SubmittedFile& file, const std::filesystem::path&) override {
        return {true, "LOCAL-" + file.submittedAt,
                "File recorded locally; this installation has no channel to IRAS, nothing was sent."};
    }
};

}  // namespace iras
