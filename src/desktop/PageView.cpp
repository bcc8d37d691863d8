#include "desktop/PageView.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "desktop/Looks.h"
#include "host/ShippedFiles.h"

namespace {

/// Not every dark desktop brings a colour for links that can be read on it.
QColor LinkColor(const QPalette& palette)
{
    constexpr double readable = 4.5, share = 0.35;
    const QColor ground = palette.color(QPalette::Base), link = palette.color(QPalette::Link);
    return Contrast(ground, link) >= readable ? link : Mixed(link, ReadableOn(ground), share);
}

}  // namespace

PageView::PageView(QWidget* parent) : QTextBrowser(parent)
{
    setOpenLinks(false);
    setOpenExternalLinks(false);
    setUndoRedoEnabled(false);
    connect(this, &QTextBrowser::anchorClicked, this, &PageView::Follow);
}

void PageView::ShowPage(const QString& path, const QString& anchor)
{
    constexpr qint64 longest = 4 * 1024 * 1024;  // bytes; an updates log grows for years
    if (path.isEmpty()) return;
    if (path != wanted_ || anchor.isEmpty()) {
        wanted_ = path;
        page_ = path;
        if (!QFile::exists(path)) page_ = FindShipped(QFileInfo(path).fileName());
        QFile file(page_);
        if (!file.open(QIODevice::ReadOnly)) {
            const QFileInfo info(path);
            setPlainText(info.fileName() + u" isn't in "_qs + QDir::toNativeSeparators(info.path()) + u"."_qs);
            return;
        }
        if (file.size() > longest) file.seek(file.size() - longest);
        const QByteArray bytes = file.read(longest);
        document()->setDefaultStyleSheet(u"a { color: "_qs + LinkColor(palette()).name() + u"; }"_qs);
        document()->setBaseUrl(QUrl::fromLocalFile(page_));
        setHtml(Words({bytes.constData(), static_cast<std::size_t>(bytes.size())}));
    }
    if (!anchor.isEmpty()) scrollToAnchor(anchor);
}

bool PageView::IsHere(const QString& path) const
{
    const QString home = QFileInfo(page_).canonicalPath(), file = QFileInfo(path).canonicalFilePath();
    return !home.isEmpty() && file.startsWith(home + u'/');
}

QVariant PageView::loadResource(int type, const QUrl& name)
{
    const QUrl url = document()->baseUrl().resolved(name);
    const bool wanted = type == QTextDocument::ImageResource || type == QTextDocument::StyleSheetResource;
    if (!wanted || !url.isLocalFile() || !IsHere(url.toLocalFile())) return {};
    return QTextBrowser::loadResource(type, url);
}

void PageView::Follow(const QUrl& link)
{
    const QUrl url = document()->baseUrl().resolved(link);
    const QString path = url.toLocalFile();
    if (url.isLocalFile() && IsHere(path)) emit PageWanted(path, url.fragment());
}
