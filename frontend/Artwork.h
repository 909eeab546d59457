// The module's own pictures: the window icon (what the host's default icon is
// to the payroll's windows) and the banner across the top of the session
// form, both drawn for this project and built into the module.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QWidget>

namespace iras {

QIcon DefaultIcon();
// The host's _LoadDefaultIcon for the module's windows: gives a window the icon.
void _LoadDefaultIcon(QWidget& window);
// The banner with the given title written on it.
QPixmap BannerPixmap(const QString& title);

}  // namespace iras
