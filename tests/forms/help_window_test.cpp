// HelpWindow: pages, chapters, the way back, the search, and its place over other windows.
#include "guide/chapters.h"
#include "guide/forms/guide_browser.h"
#include "guide/forms/help_key.h"
#include "guide/forms/help_window.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/user_click.h"

#include <QAbstractTextDocumentLayout>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::GuideBrowser;
using kvo::forms::HelpWindow;

class HelpWindowTest : public QObject {
    Q_OBJECT

    static GuideBrowser& pages() { return control<GuideBrowser>(form<HelpWindow>(), "Text_Guide"); }
    static QListWidget& chapters() {
        return control<QListWidget>(form<HelpWindow>(), "List_Chapters");
    }
    static QLineEdit& word() { return control<QLineEdit>(form<HelpWindow>(), "Text_Find"); }
    static QString foundText() { return control<QLabel>(form<HelpWindow>(), "Label_Found").text(); }
    static QString click(const char* name) {
        return userClick(&control<QPushButton>(form<HelpWindow>(), name));
    }
    static QString place() { return pages().source().toString(); }
    static QString topLine() { return pages().cursorForPosition({4, 12}).block().text(); }
    static void key(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, with);
    }
    static HelpWindow& shown(const std::string& anchor = {}) {
        auto& help = form<HelpWindow>();
        help.showChapter(anchor);
        if (!QTest::qWaitForWindowActive(&help)) qWarning("the help did not come up");
        return help;
    }

private slots:
    void cleanup() {
        unloadAllForms();
        QCOMPARE(modalComplaints(), QString());
    }

    void opensAtTheChapter() {
        HelpWindow& help = shown();
        QVERIFY(help.isVisible() && !help.isModal());
        QCOMPARE(topLine(), QStringLiteral("User guide"));
        QCOMPARE(chapters().currentItem()->text().trimmed(), QStringLiteral("User guide"));
        help.showChapter("ports");
        QCOMPARE(topLine(), QStringLiteral("Ports"));
        QCOMPARE(chapters().currentItem()->text().trimmed(), QStringLiteral("Ports"));
        QVERIFY(pages().hasFocus());
    }

    void eachHeadingIsNamedAndInTheList() {
        shown();
        const QString html = pages().document()->toHtml();
        const QString text = pages().markdown(QStringLiteral("user-guide.md"));
        const auto all = guide::chaptersOf(text.toStdString());
        for (const guide::Chapter& chapter : all) {
            const QString anchor = QString::fromStdString(chapter.anchor);
            QVERIFY2(html.contains(QStringLiteral("name=\"%1\"").arg(anchor)), qPrintable(anchor));
        }
        QCOMPARE(chapters().count(), static_cast<int>(all.size()) + 3);
    }

    // None lies outside the program, and none is wider than the text.
    void eachPictureOfThePagesShows() {
        shown();
        for (const char* page : {"user-guide.md", "file-formats.md"}) {
            const QString text = pages().markdown(QLatin1String(page));
            QVERIFY(!text.isEmpty());
            static const QRegularExpression named(QStringLiteral("!\\[[^\\]]*\\]\\(([^)]*)\\)"));
            auto match = named.globalMatch(text);
            while (match.hasNext()) {
                const QString name = match.next().captured(1);
                const auto picture =
                    pages()
                        .loadResource(QTextDocument::ImageResource, GuideBrowser::address(name))
                        .value<QImage>();
                QVERIFY2(!picture.isNull(), qPrintable(name));
                QVERIFY(picture.width() / picture.devicePixelRatio() <= 661);
            }
        }
    }

    // In the document itself, as large as it is and not as the sign of one that is missing.
    void eachPictureOfTheGuideIsInItsText() {
        shown();
        const QString text = pages().markdown(QStringLiteral("user-guide.md"));
        int drawn = 0;
        for (QTextBlock block = pages().document()->begin(); block.isValid();
             block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat format = part.fragment().charFormat().toImageFormat();
                if (!format.isValid()) continue;
                const auto picture = pages()
                                         .document()
                                         ->resource(QTextDocument::ImageResource, format.name())
                                         .value<QImage>();
                QVERIFY2(!picture.isNull(), qPrintable(format.name()));
                const QSizeF room =
                    pages().document()->documentLayout()->blockBoundingRect(block).size();
                QVERIFY2(room.height() >= picture.height() / picture.devicePixelRatio(),
                    qPrintable(format.name()));
                ++drawn;
            }
        }
        QCOMPARE(drawn, text.count(QStringLiteral("](pictures/")));
        QVERIFY(drawn >= 10);
    }

    // Also in a window that is narrower than they are, and as large again as they were behind it.
    void thePicturesFitTheWindow() {
        HelpWindow& help = shown("pit-run");
        const auto widest = [] {
            qreal most = 0;
            const QTextDocument& page = *pages().document();
            for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
                if (block.begin().atEnd()) continue; // an empty line
                const QTextCharFormat format = block.begin().fragment().charFormat();
                if (!format.isImageFormat()) continue;
                const auto picture =
                    page.resource(QTextDocument::ImageResource, format.toImageFormat().name())
                        .value<QImage>();
                most = qMax(most, picture.width() / picture.devicePixelRatio());
            }
            return qRound(most);
        };
        QCOMPARE(widest(), 660);
        for (const int width : {920, 760, 600}) { // the first on the smallest screen
            help.resize(width, 500);
            QCoreApplication::processEvents();
            QVERIFY(width < 900 || pages().horizontalScrollBar()->maximum() == 0);
            QVERIFY(widest() <= pages().viewport()->width());
            QVERIFY(widest() > pages().viewport()->width() - 30 || widest() == 660);
        }
        help.resize(1020, 760);
        QCoreApplication::processEvents();
        QCOMPARE(widest(), 660);
    }

    // Its colours are those of the file.
    void aPictureIsPainted() {
        shown("pit-run");
        QTextBlock block = pages().cursorForPosition({4, 12}).block();
        while (block.isValid() && !block.begin().fragment().charFormat().isImageFormat())
            block = block.next();
        QVERIFY(block.isValid());
        QTextCursor place(block);
        pages().setTextCursor(place);
        const QString name = block.begin().fragment().charFormat().toImageFormat().name();
        const auto picture =
            pages().document()->resource(QTextDocument::ImageResource, name).value<QImage>();
        const QRect at = pages().cursorRect(place);
        pages().verticalScrollBar()->setValue(pages().verticalScrollBar()->value() + at.top());
        const QImage seen = pages().viewport()->grab().toImage();
        const QPoint corner = pages().cursorRect(place).topLeft();
        int same = 0;
        for (int i = 10; i < 100; ++i) {
            const QRgb wanted = picture.pixel(3 * i, i);
            same += seen.pixel(corner + QPoint(3 * i, i)) == wanted ? 1 : 0;
        }
        QVERIFY2(same > 60, qPrintable(QString::number(same)));
    }

    void aChapterOfTheListIsGoneTo() {
        shown();
        const auto found = chapters().findItems(QStringLiteral("Pit run"), Qt::MatchContains);
        QCOMPARE(found.size(), 1);
        chapters().scrollToItem(found[0]);
        QCOMPARE(userClick(chapters().viewport(), chapters().visualItemRect(found[0]).center()),
            QString());
        QCOMPARE(topLine(), QStringLiteral("Pit run"));
        chapters().setFocus();
        key(Qt::Key_Down);
        QCOMPARE(topLine(), QStringLiteral("The logger's own settings"));
        // A click on the chapter that is marked goes there anew.
        pages().verticalScrollBar()->setValue(0);
        QCOMPARE(userClick(chapters().viewport(),
                     chapters().visualItemRect(chapters().currentItem()).center()),
            QString());
        QCOMPARE(topLine(), QStringLiteral("The logger's own settings"));
    }

    void backAndForwardGoThroughWhatWasRead() {
        HelpWindow& help = shown("ports");
        QVERIFY(!control<QPushButton>(help, "But_Back").isEnabled());
        pages().setSource(QUrl(QStringLiteral("#pit-run"))); // as a link does
        QCOMPARE(topLine(), QStringLiteral("Pit run"));
        pages().setSource(QUrl(QStringLiteral("file-formats.md")));
        QCOMPARE(chapters().currentItem()->text(), QStringLiteral("File formats"));
        QVERIFY(pages().toPlainText().contains(QStringLiteral("KvoData.Ini")));
        QCOMPARE(click("But_Back"), QString());
        QCOMPARE(topLine(), QStringLiteral("Pit run"));
        key(Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(place(), GuideBrowser::address("user-guide.md", "ports").toString());
        key(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(topLine(), QStringLiteral("Pit run"));
        QCOMPARE(click("But_Forward"), QString());
        QVERIFY(place().endsWith(QStringLiteral("file-formats.md")));
        QVERIFY(!control<QPushButton>(help, "But_Forward").isEnabled());
    }

    void theSearchGoesFromPlaceToPlaceAndOnceRound() {
        shown();
        key(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(word().hasFocus());
        QTest::keyClicks(&word(), QStringLiteral("xdialoutx"));
        key(Qt::Key_Return);
        QCOMPARE(foundText(), QStringLiteral("Not found"));
        QVERIFY(form<HelpWindow>().isVisible());
        key(Qt::Key_F, Qt::ControlModifier); // selects what was typed
        QTest::keyClicks(&word(), QStringLiteral("adapter"));
        QCOMPARE(foundText(), QString());
        key(Qt::Key_Return);
        QCOMPARE(pages().textCursor().selectedText(), QStringLiteral("adapter"));
        const int first = pages().textCursor().position();
        std::vector<int> places{first};
        for (int i = 0; i < 50; ++i) {
            key(Qt::Key_F3);
            if (pages().textCursor().position() == first) break;
            places.push_back(pages().textCursor().position());
        }
        QVERIFY(places.size() > 2 && places.size() < 50);
        QCOMPARE(foundText(), QString());
        key(Qt::Key_F3, Qt::ShiftModifier); // before the first is the last
        QCOMPARE(pages().textCursor().position(), places.back());
        QCOMPARE(click("But_Next"), QString());
        QCOMPARE(pages().textCursor().position(), first);
        QCOMPARE(click("But_Previous"), QString());
        QCOMPARE(pages().textCursor().position(), places.back());
    }

    void aWordThatIsNowhereLeavesThePlace() {
        shown("ports");
        QTest::keyClicks(&word(), QStringLiteral("adapter"));
        QCOMPARE(click("But_Next"), QString());
        const int before = pages().textCursor().position();
        QVERIFY(before > 0);
        word().clear();
        QTest::keyClicks(&word(), QStringLiteral("no such word"));
        QCOMPARE(click("But_Next"), QString());
        QCOMPARE(pages().textCursor().position(), before);
        QCOMPARE(foundText(), QStringLiteral("Not found"));
        word().clear();
        QCOMPARE(click("But_Next"), QString());
        QCOMPARE(foundText(), QString());
    }

    void theListsOfCommandsArePages() {
        form<HelpWindow>().listCommands({{"The graph",
            {{"", "&File", "Mnu_File", "", true}, {"Mnu_File", "&Open", "Mnu_Open", "Ctrl+O"}}}});
        form<HelpWindow>().showKeyboard();
        QVERIFY(pages().toPlainText().contains(QStringLiteral("Ctrl+O\nFile, Open")));
        QCOMPARE(chapters().currentItem()->text(), QStringLiteral("Keyboard"));
        form<HelpWindow>().showCommands();
        QVERIFY(pages().toPlainText().contains(QStringLiteral("File, Open\nCtrl+O")));
        QCOMPARE(chapters().currentItem()->text(), QStringLiteral("Commands"));
    }

    void escapeAndCloseLeadBack() {
        QWidget before;
        before.show();
        before.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&before));
        shown();
        key(Qt::Key_Escape);
        QVERIFY(!form<HelpWindow>().isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&before));
        shown("ports");
        QCOMPARE(click("But_Close"), QString());
        QVERIFY(!form<HelpWindow>().isVisible());
    }

    // A form that waits takes no click for a window beside it; F1 in it works all the same.
    void overAFormThatWaitsItWaitsToo() {
        shown(); // beside everything, before the form comes
        auto dialog = std::make_unique<QDialog>();
        dialog->setObjectName(QStringLiteral("CustomScale"));
        dialog->setModal(true);
        dialog->show();
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        std::vector<std::string> asked;
        const forms::HelpKey f1(qApp, [&asked](const std::vector<std::string>& names) {
            asked = names;
            form<HelpWindow>().showChapter(guide::anchorFor(names));
        });
        QTest::keyClick(dialog.get(), Qt::Key_F1, Qt::ControlModifier);
        QVERIFY(asked.empty());
        QTest::keyClick(dialog.get(), Qt::Key_F1);
        QCOMPARE(asked, std::vector<std::string>{"CustomScale"});
        QCOMPARE(QApplication::activeModalWidget(), &form<HelpWindow>());
        QCOMPARE(topLine(), QStringLiteral("Zooming"));
        QTest::keyClick(&form<HelpWindow>(), Qt::Key_F1); // in the help itself
        QCOMPARE(place(), GuideBrowser::address("user-guide.md", "using-this-help").toString());
        QCOMPARE(click("But_Close"), QString());
        QCOMPARE(QApplication::activeModalWidget(), dialog.get());
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        dialog.reset();
        shown();
        QVERIFY(!form<HelpWindow>().isModal());
    }

    // A desktop puts what belongs to a form over its middle, also above the edge of the screen.
    void overAFormThatStandsHighItIsOnTheScreen() {
        QDialog dialog;
        dialog.setModal(true);
        dialog.resize(300, 60);
        dialog.move(0, 0);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        HelpWindow& help = shown();
        const QRect room = help.screen()->availableGeometry();
        QVERIFY(room.contains(help.frameGeometry()));
        QCOMPARE(help.y() - room.top(), (room.height() - help.height()) / 3);
        QCOMPARE(help.x() - room.left(), (room.width() - help.width()) / 2);
        QCOMPARE(click("But_Close"), QString());
        help.move(30, 40); // where the user has put it
        shown("ports");
        QCOMPARE(help.pos(), QPoint(30, 40));
    }

    // Keys, names and buddies for those who do not see it.
    void everyControlHasItsName() {
        shown();
        QCOMPARE(pages().accessibleName(), QStringLiteral("Guide"));
        QCOMPARE(chapters().accessibleName(), QStringLiteral("Chapters"));
        bool found = false;
        for (const QLabel* label : form<HelpWindow>().findChildren<QLabel*>())
            found = found || label->buddy() == &word();
        QVERIFY(found);
    }

    // Pictures for the eye, where KVO_PICTURES names a folder.
    void looks() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("no folder for pictures");
        const QPalette light = QApplication::palette();
        const QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const bool isDark : {false, true}) {
            QApplication::setPalette(isDark ? dark : light);
            const QString look = isDark ? QStringLiteral("dark") : QStringLiteral("light");
            for (const char* anchor :
                {"", "the-graph", "choosing-a-run", "pit-run", "setting-up"}) {
                HelpWindow& help = shown(anchor);
                QVERIFY(saveScreenshot(
                    help, QStringLiteral("%1/help-%2-%3.png").arg(folder, anchor, look)));
            }
            unloadAllForms();
        }
        QApplication::setPalette(light);
    }
};

KVO_FORM_TEST_MAIN(HelpWindowTest)
#include "help_window_test.moc"
