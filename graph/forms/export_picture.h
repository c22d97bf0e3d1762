#pragma once
// ExportPicture: how large an exported picture is to be, and on what ground.
#include <QDialog>
#include <QSize>

#include <memory>
#include <optional>

class QCheckBox;
class QLabel;
class QSpinBox;

namespace kvo::forms {

struct PictureLook {
    QSize sizePx;
    bool whitePaper = false;
};

class ExportPicture : public QDialog {
    Q_OBJECT

public:
    ExportPicture();

    // Asks under a title, starting from a look; nothing where it was left by Cancel. What has no
    // pixels is not asked for its size.
    std::optional<PictureLook> ask(const QString& title, bool hasSize, const PictureLook& start);

protected:
    void accept() override;
    void reject() override;

private:
    QSpinBox* makeSide(const char* name);

    // The form is gone once it was left.
    std::shared_ptr<std::optional<PictureLook>> m_answer =
        std::make_shared<std::optional<PictureLook>>();
    QLabel* Label_Width = nullptr;
    QLabel* Label_Height = nullptr;
    QSpinBox* Text_Width = nullptr;
    QSpinBox* Text_Height = nullptr;
    QCheckBox* WhitePaper = nullptr;
};

} // namespace kvo::forms
