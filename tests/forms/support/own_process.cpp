#include "tests/forms/support/own_process.h"

#include "tests/forms/support/form_test_main.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

namespace kvo::testing {

namespace {

constexpr const char* variable = "KVO_OWN_PROCESS";

} // namespace

bool isOwnProcess() {
    return qEnvironmentVariableIsSet(variable);
}

QString abortInOwnProcess() {
    QString test = QLatin1String(QTest::currentTestFunction());
    if (const char* row = QTest::currentDataTag()) test += QLatin1Char(':') + QLatin1String(row);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(variable), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
        {nameOfFormTest(), QStringLiteral("-nocrashhandler"), test});
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::CrashExit) return {};
    return QString::fromLocal8Bit(process.readAllStandardError());
}

} // namespace kvo::testing
