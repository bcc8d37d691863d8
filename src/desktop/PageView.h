#pragma once
// Shows pages that lie on this computer. Nothing is fetched from anywhere else, and no script runs.

#include <QTextBrowser>

class PageView : public QTextBrowser {
    Q_OBJECT

public:
    explicit PageView(QWidget* parent = nullptr);

    /// Shows a page; a link or picture that leads out of its directory leads nowhere. One that can't be read is told in
    /// its place.
    void ShowPage(const QString& path, const QString& anchor = {});

    QVariant loadResource(int type, const QUrl& name) override;

signals:
    /// The user has followed a link to another page, or within one.
    void PageWanted(const QString& path, const QString& anchor);

private:
    bool IsHere(const QString& path) const;
    void Follow(const QUrl& link);

    QString wanted_, page_;  // the page asked for, and where it was found
};
