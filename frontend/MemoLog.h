// A run log shown in a memo of the "Log File" page: each line the run writes
// appears at once, and the lines are kept as written for the log files.
#pragma once

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QPointer>

#include "platform/common/LogSink.h"

namespace iras {

class MemoLog : public LogSink {
public:
    explicit MemoLog(QPlainTextEdit* memo);
    void Append(std::string_view line) override;
    StringList Lines() const override { return lines_.Lines(); }
    void Clear() override;

private:
    QPointer<QPlainTextEdit> memo_;
    MemoryLog lines_;
    QElapsedTimer sincePaint_;
};

}  // namespace iras
