#pragma once
// SetupOBC: what the logger says of itself, and its recording and shift-light settings to be
// changed. It reads and shows; the course of a configuration is link/obc_session.h.
#include "link/obc_session.h"
#include "platform/qt/form_kit.h"

#include <QDialog>

#include <array>
#include <functional>

class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kvo::forms {

class SetupOBC : public QDialog, private link::ObcView {
    Q_OBJECT

public:
    SetupOBC();

    // Asks the logger for its settings and, where they came, shows itself modally. `wanted` turns
    // false when the user has left while the logger was asked.
    void configure(const std::function<bool()>& wanted);

protected:
    void reject() override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void makeLayout();
    QGroupBox* makeIdentity();
    QGroupBox* makeRecording();
    QGroupBox* makePickups();
    QGroupBox* makeShiftLights();
    void addShiftLight(QGridLayout& grid, int row, const char* caption, int number);
    QLineEdit* makeBox(link::ObcBox box);
    QLineEdit& boxOf(link::ObcBox box) const { return *m_boxes[static_cast<std::size_t>(box)]; }
    void SaveSetup_Click();
    void CancelSetup_Click();

    // link::ObcView
    void showHeader(const link::ObcShown& shown) override;
    void setStatus(const std::string& text) override;
    link::ObcValues values() const override;
    void setText(link::ObcBox box, const std::string& text) override;
    void focus(link::ObcBox box) override;
    void setWriting(bool writing) override;
    void unload() override;

    QLabel* Label_DataType = nullptr;
    QLabel* Label_Model = nullptr;
    QLabel* Label_Ver = nullptr;
    QLabel* Label_MemType = nullptr;
    QLabel* Label_S_No = nullptr;
    std::array<QLineEdit*, link::obcBoxCount> m_boxes{}; // Label_RoRpm to Label_MT4
    platform_qt::ControlArray<QComboBox, 0, 3> ComboPPR;
    QGroupBox* ShiftLightFrame = nullptr;
    QLabel* Label_Status = nullptr; // says when the header did not come whole
    QPushButton* SaveSetup = nullptr;
    QPushButton* CancelSetup = nullptr;
    QWidget* m_inner = nullptr; // all that takes a click
    link::ObcSession m_session;
};

} // namespace kvo::forms
