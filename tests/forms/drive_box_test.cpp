// The box of drives: a row a drive, and the drive that a folder lies on.
#include "library/forms/drive_box.h"
#include "platform/qt/text.h"
#include "tests/forms/support/form_test_main.h"

#include <QDir>

using namespace kvo::platform_qt;
using kvo::forms::DriveBox;

class DriveBoxTest : public QObject {
    Q_OBJECT

private slots:
    void aRowForEachDrive() {
        DriveBox box;
        QCOMPARE(static_cast<std::size_t>(box.count()), box.drives().size());
        QVERIFY(box.count() >= 1);
        for (int row = 0; row < box.count(); ++row) {
            box.setCurrentIndex(row);
            QCOMPARE(box.chosenRoot(), box.drives()[static_cast<std::size_t>(row)].root);
        }
        box.setCurrentIndex(-1);
        QCOMPARE(box.chosenRoot(), std::string());
    }

    void theDriveIsTheNearestOneAboveAFolder() {
        DriveBox box;
        const std::string home = typedPath(QDir::toNativeSeparators(QDir::homePath()));
        box.showDriveOf(home);
        QCOMPARE(box.chosenRoot(), home);
        box.showDriveOf(typedPath(QDir::toNativeSeparators(QDir::rootPath())));
        QVERIFY(box.chosenRoot() != home);
        box.showDriveOf("no path");
        QCOMPARE(box.currentIndex(), -1);
    }
};

KVO_FORM_TEST_MAIN(DriveBoxTest)
#include "drive_box_test.moc"
