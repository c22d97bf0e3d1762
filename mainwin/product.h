#pragma once
// What the windows say of the program itself.
#include <QPixmap>
#include <QString>

namespace kvo::forms {

// "Version " and the program's three version numbers.
QString versionText();
// Address of the maker's update page.
std::string updatePage();
// The picture of the vehicle that the configuration names, from the program's folder; null if there
// is none.
QPixmap vehiclePicture();

} // namespace kvo::forms
