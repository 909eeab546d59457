// The small window that tells the clerk a long run is under way: one line of
// text over a smooth bar of 0 to 100, no border icons, centred on the screen,
// 400 by 70. It stays above the session form (a tool window of it) while
// shown. A return is processed on the GUI thread, so the window paints itself
// whenever its text or bar changes instead of waiting for the event loop.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QWidget>

#include "apps/run/RunInterfaces.h"

namespace iras {

class TForm_CRProgressBar : public QWidget, public ProgressWindow {
    Q_OBJECT
public:
    explicit TForm_CRProgressBar(QWidget* owner = nullptr);

    void SetCaption(const std::string& caption) override;
    void SetLabelText(const std::string& text) override;
    void SetPosition(const std::int32_t& position) override;
    void SetStep(std::int32_t step) override;
    void Show() override;
    void Repaint() override;
    void Step() override;

    QLabel* Label() const { return label_; }
    QProgressBar* Bar() const { return bar_; }

private:
    void PaintNow();

    QLabel* label_;
    QProgressBar* bar_;
    int step_ = 10;
};

}  // namespace iras
