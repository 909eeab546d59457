// The progress window. Painting while the run holds the GUI thread: after a
// change the window is repainted at once and the window system's pending
// events (its first expose, above all) are let through, user input excepted,
// so that the clerk cannot start a second run from under the first.
#include "frontend/TForm_CRProgressBar.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include "frontend/Artwork.h"

namespace iras {

TForm_CRProgressBar::TForm_CRProgressBar(QWidget* owner)
    : QWidget(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      label_(new QLabel(QStringLiteral("Processing Report...."), this)),
      bar_(new QProgressBar(this)) {
    setObjectName(QStringLiteral("Form_CRProgressBar"));
    setWindowTitle(QStringLiteral("Form_CRProgressBar"));
    _LoadDefaultIcon(*this);
    label_->setObjectName(QStringLiteral("Label"));
    bar_->setObjectName(QStringLiteral("Bar"));
    bar_->setRange(0, 100);
    bar_->setValue(0);
    bar_->setTextVisible(false);  // smooth, no percentage
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 8);
    layout->setSpacing(4);
    layout->addWidget(label_);
    layout->addWidget(bar_);
    setFixedSize(400, 70);
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        move(screen->availableGeometry().center() - rect().center());
    }
}

void TForm_CRProgressBar::SetCaption(const std::string& caption) {
    setWindowTitle(QString::fromStdString(caption));
}

void TForm_CRProgressBar::SetLabelText(const std::string& text) {
    label_->setText(QString::fromStdString(text));
    PaintNow();
}

void TForm_CRProgressBar::SetPosition(const std::int32_t& position) {
    bar_->setValue(position);
    PaintNow();
}

void TForm_CRProgressBar::SetStep(std::int32_t step) { step_ = step; }

void TForm_CRProgressBar::Show() {
    show();
    raise();
    PaintNow();
}

void TForm_CRProgressBar::Repaint() { PaintNow(); }

void TForm_CRProgressBar::Step() {
    bar_->setValue(std::min(bar_->maximum(), bar_->value() + step_));
    PaintNow();
}

void TForm_CRProgressBar::PaintNow() {
    if (!isVisible()) return;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    repaint();
}

}  // namespace iras
