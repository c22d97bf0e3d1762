#pragma once
// All form tests are one program, since each would link the whole of the application anew. A test
// is named by its source file and is run alone: `form_tests load_file_test [Qt Test's arguments]`.
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"

#include <QFont>
#include <QString>
#include <QTest>

namespace kvo::testing {

// Enters the main function of the test in that source file. For KVO_FORM_TEST_MAIN alone.
bool enterFormTest(const char* file, int (*main)(int argc, char* argv[]));

// The name of the test that this process runs, for one that starts the program anew.
QString nameOfFormTest();

// Runs a test class on the application as the program prepares it, with Qt's own dialogs.
template <class TestClass> int runFormTest(int argc, char* argv[]) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    kvo::platform_qt::Application application(argc, argv);
    kvo::platform_qt::prepareApplication(application);
    application.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    TestClass test;
    const int failures = QTest::qExec(&test, argc, argv);
    kvo::platform_qt::unloadAllForms();
    return failures;
}

} // namespace kvo::testing

#define KVO_FORM_TEST_MAIN(TestClass)                                                              \
    static const bool entered##TestClass =                                                         \
        kvo::testing::enterFormTest(__FILE__, kvo::testing::runFormTest<TestClass>);
