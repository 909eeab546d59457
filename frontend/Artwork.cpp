// Loads the artwork from the module's resources. The banner's title is
// written at run time, so it is always in the form's own font and words.
#include "frontend/Artwork.h"

#include <QFont>
#include <QPainter>

static void InitArtwork() { Q_INIT_RESOURCE(artwork); }

namespace iras {

QIcon DefaultIcon() {
    InitArtwork();
    return QIcon(QStringLiteral(":/iras/icon.png"));
}

void _LoadDefaultIcon(QWidget& window) { window.setWindowIcon(DefaultIcon()); }

QPixmap BannerPixmap(const QString& title) {
    InitArtwork();
    QPixmap banner(QStringLiteral(":/iras/banner.png"));
    if (banner.isNull()) return banner;
    QPainter painter(&banner);
    painter.setRenderHint(QPainter::TextAntialiasing);
    QFont font = painter.font();
    font.setPixelSize(22);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    const QRect area(88, 0, banner.width() - 96, banner.height() - 22);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignBottom, title);
    font.setPixelSize(12);
    font.setBold(false);
    painter.setFont(font);
    painter.setPen(QColor(0xd8, 0xea, 0xf2));
    painter.drawText(QRect(88, banner.height() - 20, banner.width() - 96, 16), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Year-end returns for the Inland Revenue Authority of Singapore"));
    return banner;
}

}  // namespace iras
