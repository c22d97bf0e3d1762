#pragma once
// The drives of the system to choose from, above the folders of a dialogue.
#include "platform/qt/drives.h"

#include <QComboBox>

#include <string>
#include <vector>

namespace kvo::forms {

class DriveBox : public QComboBox {
public:
    DriveBox();

    const std::vector<platform_qt::Drive>& drives() const { return m_drives; }
    // Path of the drive that is chosen, UTF-8; empty for none.
    std::string chosenRoot() const;
    // Chooses the drive that a folder lies on, or none.
    void showDriveOf(const std::string& folder);

private:
    std::vector<platform_qt::Drive> m_drives = platform_qt::drives();
};

} // namespace kvo::forms
