#pragma once
// What the windows say of the program itself.
#include <QPixmap>
#include <QString>

#include <string>

namespace kvo::forms {

// "Version " and the program's three version numbers.
QString versionText();
// The three numbers joined by ".".
std::string versionNumbers();
// Under which licence the program is.
QString licenceText();
// The toolkit that the program runs on, with its version and its licence. Two lines.
QString toolkitText();
// The makers' web address.
std::string makersPage();
// Address of the maker's update page.
std::string updatePage();
// The picture of the vehicle that the configuration names, from the program's folder; null if there
// is none.
QPixmap vehiclePicture();

} // namespace kvo::forms
