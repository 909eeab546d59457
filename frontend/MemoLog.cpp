// The memo is repainted from here because a run keeps the GUI thread busy: a
// few times a second is enough for the eye and keeps a long log fast.
#include "frontend/MemoLog.h"

namespace iras {

MemoLog::MemoLog(QPlainTextEdit* memo) : memo_(memo) { sincePaint_.start(); }

void MemoLog::Append(const std::string& line) {
    lines_.Append(line);
    if (!memo_) return;
    memo_->appendPlainText(QString::fromStdString(line));
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
