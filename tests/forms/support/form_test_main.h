#pragma once
// main() of a form test: the application as the program prepares it, with Qt's own dialogs.
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"

#include <QApplication>
#include <QFont>
#include <QTest>

#define KVO_FORM_TEST_MAIN(TestClass)                                                              \
    int main(int argc, char* argv[]) {                                                             \
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);                                   \
        QApplication application(argc, argv);                                                      \
        kvo::platform_qt::prepareApplication(application);                                         \
        application.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));                              \
        TestClass test;                                                                            \
        const int failures = QTest::qExec(&test, argc, argv);                                      \
        kvo::platform_qt::unloadAllForms();                                                        \
        return failures;                                                                           \
    }
