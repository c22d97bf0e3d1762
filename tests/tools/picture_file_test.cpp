// The files of the guide's pictures, and what tells one from the window it was taken of.
#include "tools/guide_pictures/picture_file.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QColor>
#include <QImageReader>
#include <QImageWriter>
#include <QTemporaryDir>

#include <cstdlib>

namespace kvo::guide_pictures {
namespace {

QImage ofColours(int count) {
    QImage picture(120, 100, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int place = (x + picture.width() * y) % count;
            picture.setPixel(x, y, qRgb(place % 250, place / 250 * 5, 40));
        }
    }
    return picture;
}

class PictureFile : public testing::Test {
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("one.png")); }
    QString differenceFrom(const QImage& picture) const { return difference(picture, path()); }
    // The file as another machine might have left it.
    void markAnew(const QImage& picture) const {
        QImage other = picture;
        other.setText(QStringLiteral("Drawn with"), QStringLiteral("other letters"));
        ASSERT_TRUE(QImageWriter(path(), "png").write(other));
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(PictureFile, FewColoursStayAsTheyAre) {
    const QImage picture = ofColours(256);
    EXPECT_EQ(inFewColours(picture).format(), QImage::Format_Indexed8);
    EXPECT_EQ(inFewColours(picture).convertToFormat(QImage::Format_RGB32), picture);
}

TEST_F(PictureFile, OfManyEachBecomesOneNearIt) {
    const QImage picture = ofColours(3000);
    const QImage few = inFewColours(picture);
    EXPECT_LE(few.colorCount(), 256);
    EXPECT_GT(few.colorCount(), 100);
    for (int x = 0; x < picture.width(); ++x) {
        const QColor from = picture.pixelColor(x, 50);
        const QColor to = few.pixelColor(x, 50);
        EXPECT_LE(std::abs(from.red() - to.red()), 12);
        EXPECT_LE(std::abs(from.green() - to.green()), 12);
    }
}

TEST_F(PictureFile, TheSamePictureIsTheSameFile) {
    const QImage picture = ofColours(3000);
    ASSERT_TRUE(write(picture, path()));
    EXPECT_EQ(differenceFrom(picture), QString());
}

TEST_F(PictureFile, OnePixelIsADifference) {
    QImage picture = ofColours(30);
    ASSERT_TRUE(write(picture, path()));
    picture.setPixel(60, 50, qRgb(255, 255, 255));
    EXPECT_EQ(differenceFrom(picture), QStringLiteral("the window looks different"));
    EXPECT_EQ(differenceFrom(picture.copy(0, 0, 119, 100)),
        QStringLiteral("the window has another size"));
}

TEST_F(PictureFile, OtherLettersLeaveOnlyTheSizeToJudge) {
    QImage picture = ofColours(30);
    markAnew(picture);
    picture.fill(Qt::white);
    EXPECT_EQ(differenceFrom(picture), QString());
    EXPECT_EQ(differenceFrom(picture.scaled(100, 100)), QString());
    EXPECT_EQ(
        differenceFrom(picture.scaled(90, 100)), QStringLiteral("the window has another size"));
}

TEST_F(PictureFile, AFileThatIsMissingIsTold) {
    EXPECT_FALSE(differenceFrom(ofColours(3)).isEmpty());
    EXPECT_FALSE(write(ofColours(3), QStringLiteral("/nowhere/at/all.png")));
}

} // namespace kvo::guide_pictures

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv); // for the letters
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
