#include "platform/qt/qt_mail.h"

#include "platform/qt/text.h"

#include <QByteArray>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

namespace kvo::platform_qt {

namespace {

using platform::MailDraft;
using platform::MailOutcome;
using platform::MailResult;

constexpr int exitNoProgram = 3; // what xdg-email says where the desktop has no mail program

QByteArray bytesOf(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

// A line of the head: a line end in it would begin another one.
QByteArray headLine(const std::string& text) {
    QByteArray line = bytesOf(text);
    for (const char end : {'\r', '\n'}) line.replace(end, ' ');
    return line.toPercentEncoding("@");
}

QByteArray bodyLines(const std::string& text) {
    QByteArray lines = bytesOf(text);
    lines.replace("\r\n", "\n").replace("\n", "\r\n");
    return lines.toPercentEncoding();
}

// The whole draft as one address. Given apart, texts that look like options are taken for such, and
// backslashes are lost where a shell echoes them on the way; coded like this every text arrives.
QString addressOf(const MailDraft& draft) {
    QByteArrayList fields;
    if (!draft.subject.empty()) fields << "subject=" + headLine(draft.subject);
    if (!draft.body.empty()) fields << "body=" + bodyLines(draft.body);
    for (const std::string& path : draft.attachments)
        fields << "attach=" + bytesOf(path).toPercentEncoding("/");
    const QByteArray head = "mailto:" + headLine(draft.recipient) + '?';
    return QString::fromLatin1(head + fields.join('&'));
}

// Whether the program has ended within the time. It goes on else.
bool endsWithin(QProcess& process, int patienceMs) {
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(patienceMs, &loop, &QEventLoop::quit);
    if (process.state() != QProcess::NotRunning) loop.exec(QEventLoop::ExcludeUserInputEvents);
    return process.state() == QProcess::NotRunning;
}

MailResult resultOf(int exitCode) {
    if (exitCode == 0) return {};
    if (exitCode == exitNoProgram) {
        return {MailOutcome::noMailProgram, "No mail program is set up on this computer."};
    }
    return {MailOutcome::failed,
        "The mail program could not open the message (code " + std::to_string(exitCode) + ")."};
}

// The exit code of a program that has ended, -1 where it crashed.
int exitCodeOf(const QProcess& process) {
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

// The program goes on alone; its end is told where it is a refusal.
void leaveAlone(QProcess* process, const platform::Mail::RefusedLater& refusedLater) {
    QObject::connect(process, &QProcess::finished, process, [process, refusedLater] {
        MailResult result = resultOf(exitCodeOf(*process));
        process->deleteLater();
        if (!result && refusedLater) refusedLater(result);
    });
}

MailResult handOver(const QString& program, const QString& address, int patienceMs,
    const platform::Mail::RefusedLater& refusedLater) {
    // Without a parent: a mail program that stays in front of it must outlive this program.
    auto* process = new QProcess;
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, {address});
    if (!process->waitForStarted()) {
        const QString why = process->errorString();
        delete process;
        return {
            MailOutcome::failed, "The mail program could not be started.\n" + why.toStdString()};
    }
    if (!endsWithin(*process, patienceMs)) {
        leaveAlone(process, refusedLater);
        return {};
    }
    MailResult result = resultOf(exitCodeOf(*process));
    delete process;
    return result;
}

} // namespace

MailResult attachable(const MailDraft& draft) {
    for (const std::string& path : draft.attachments) {
        const QFileInfo file(shownPath(path));
        if (file.isFile() && file.isReadable()) continue;
        return {MailOutcome::failed, path + "\nis not there, so it cannot be attached."};
    }
    return {};
}

MailResult QtMail::compose(const MailDraft& draft, const RefusedLater& refusedLater) {
    if (MailResult missing = attachable(draft); !missing) return missing;
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xdg-email"));
    if (program.isEmpty()) {
        return {MailOutcome::noMailProgram,
            "This computer has no way to open a mail program (xdg-email is not installed)."};
    }
    return handOver(program, addressOf(draft), m_patienceMs, refusedLater);
}

std::string QtMail::folderForCopies() {
    if (!m_copies || !m_copies->isValid()) m_copies.emplace();
    const QString name = QString::number(++m_mails);
    if (!m_copies->isValid() || !QDir(m_copies->path()).mkdir(name)) return {};
    return typedPath(m_copies->filePath(name));
}

} // namespace kvo::platform_qt
