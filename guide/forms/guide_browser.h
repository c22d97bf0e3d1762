#pragma once
// The pages of the help as a browser shows them: the guide and what it leads to, which are compiled
// into the program with their pictures, and the pages that are made from the tables of the
// commands.
#include "guide/command_pages.h"

#include <QHash>
#include <QImage>
#include <QTextBrowser>

#include <vector>

namespace kvo::forms {

class GuideBrowser : public QTextBrowser {
    Q_OBJECT

public:
    GuideBrowser();

    // What the pages list that are made from commands.
    void listCommands(std::vector<guide::WindowCommands> commands);

    // The address of a page by its name: "user-guide.md", "keyboard".
    static QUrl address(const QString& page, const QString& anchor = {});
    // The Markdown text of a page, by its name; empty for a page that there is not.
    QString markdown(const QString& page) const;

    // A page with its headings named and its tables drawn, or a picture no wider than the text.
    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int roomForPictures() const;
    QImage fittingPicture(const QString& path) const;
    void fitPictures();

    int m_room;                       // pixels that the widest picture has now
    QHash<QString, QImage> m_fitting; // the pictures in that room, by their paths
    std::vector<guide::WindowCommands> m_commands;
};

} // namespace kvo::forms
