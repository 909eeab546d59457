// The memo is repainted from here because a run keeps the GUI thread busy: a
// few times a second is enough for the eye and keeps a long log fast.
#include "frontend/MemoLog.h"

#include <QTextCursor>

namespace iras {

MemoLog::MemoLog(QPlainTextEdit* memo) : memo_(memo) { sincePaint_.start(); }

void MemoLog::Append(std::string_view line) {
    const bool first = lines_.View().empty();
    lines_.Append(line);
    if (!memo_) return;
    // appendPlainText would swallow a first line that is empty (an empty
    // memo already holds one empty paragraph); the memo must show the log's
    // lines exactly as the saved log file has them.
    QTextCursor end(memo_->document());
    end.movePosition(QTextCursor::End);
    end.insertText((first ? QString() : QStringLiteral("\n")) + QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())));
    memo_->moveCursor(QTextCursor::End);  // and keep the newest line in sight
    if (sincePaint_.elapsed() > 150 && memo_->isVisible()) {
        memo_->viewport()->repaint();
        sincePaint_.restart();
    }
}

void MemoLog::Clear() {
    lines_.Clear();
    if (memo_) memo_->clear();
}

}  // namespace iras
