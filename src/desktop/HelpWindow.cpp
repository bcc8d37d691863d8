#include "desktop/HelpWindow.h"

#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>

#include "host/ShippedFiles.h"

namespace {

QString ReadText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

QString HelpWindow::FindFolder(const QString& programDirectory)
{
    const QString own = programDirectory + u"/help"_qs, contents = u"/contents.txt"_qs;
    for (const QString& list : {own + contents, FindShipped(u"help"_qs + contents)})
        if (QFile::exists(list)) return QFileInfo(list).canonicalPath();
    return own;
}

HelpWindow::HelpWindow(const QString& folder) : folder_(folder)
{
    setObjectName(u"help"_qs);
    setWindowTitle(u"Burnline - Help"_qs);
    ReadPages();
    Build();
    List();
}

void HelpWindow::ReadPages()
{
    for (const QString& line : ReadText(folder_ + u"/contents.txt"_qs).split(u'\n')) {
        const QString file = line.trimmed();
        if (file.isEmpty()) continue;
        QTextDocument document;
        document.setHtml(ReadText(folder_ + u'/' + file));
        pages_.push_back({file, document.metaInformation(QTextDocument::DocumentTitle), document.toPlainText()});
    }
}

void HelpWindow::Build()
{
    wanted_ = new QLineEdit(this);
    wanted_->setObjectName(u"helpSearch"_qs);
    wanted_->setPlaceholderText(u"Search all pages"_qs);
    wanted_->setAccessibleName(u"Search all pages"_qs);
    wanted_->setClearButtonEnabled(true);
    contents_ = new QListWidget(this);
    contents_->setObjectName(u"helpContents"_qs);
    contents_->setAccessibleName(u"Contents"_qs);
    contents_->setWordWrap(true);
    contents_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    page_ = new PageView(this);
    page_->setObjectName(u"helpPage"_qs);
    page_->setAccessibleName(u"Page"_qs);

    auto* buttons = new QHBoxLayout;
    back_ = MakeButton("helpBack", u"< &Back"_qs, u"The page before (Alt+Left)"_qs, &HelpWindow::Back);
    forward_ = MakeButton("helpForward", u"&Forward >"_qs, u"The page behind (Alt+Right)"_qs, &HelpWindow::Forward);
    buttons->addWidget(back_);
    buttons->addWidget(forward_);
    buttons->addStretch();
    buttons->addWidget(MakeButton("helpSmaller", u"A-"_qs, u"Smaller text (Ctrl+-)"_qs, &HelpWindow::Smaller));
    buttons->addWidget(MakeButton("helpLarger", u"A+"_qs, u"Larger text (Ctrl++)"_qs, &HelpWindow::Larger));

    auto* left = new QWidget(this);
    auto* leftLayout = new QVBoxLayout(left);
    leftLayout->addWidget(wanted_);
    leftLayout->addWidget(contents_);
    auto* right = new QWidget(this);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->addLayout(buttons);
    rightLayout->addWidget(page_);
    auto* halves = new QSplitter(this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(left);
    halves->addWidget(right);
    halves->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(halves);

    connect(wanted_, &QLineEdit::textChanged, this, &HelpWindow::List);
    connect(contents_, &QListWidget::currentRowChanged, this, &HelpWindow::Choose);
    connect(page_, &PageView::PageWanted, this, [this](const QString& path, const QString& anchor) {
        Open({QFileInfo(path).fileName(), anchor});
    });
    const int letter = fontMetrics().height();
    resize(QSize(letter * 62, letter * 44).boundedTo(screen()->availableGeometry().size() - QSize(letter, letter * 3)));
    halves->setSizes({letter * 17, letter * 45});
}

QToolButton* HelpWindow::MakeButton(const char* name, const QString& caption, const QString& tip,
                                    void (HelpWindow::*act)())
{
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(caption);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this, act);
    return button;
}

/// The pages that hold all words that are searched for; all pages without one.
void HelpWindow::List()
{
    const QSignalBlocker quiet(contents_);
    const QStringList words = wanted_->text().split(u' ', Qt::SkipEmptyParts);
    contents_->clear();
    for (const Page& page : pages_) {
        const bool holds = std::all_of(words.begin(), words.end(), [&](const QString& word) {
            return page.text.contains(word, Qt::CaseInsensitive) || page.title.contains(word, Qt::CaseInsensitive);
        });
        if (!holds) continue;
        auto* item = new QListWidgetItem(page.title, contents_);
        item->setData(Qt::UserRole, page.file);
        if (!visited_.empty() && visited_[here_].file == page.file) contents_->setCurrentItem(item);
    }
    if (contents_->count() == 0) {
        auto* none = new QListWidgetItem(u"No page holds these words."_qs, contents_);
        none->setFlags(Qt::NoItemFlags);
    }
}

void HelpWindow::Choose()
{
    const QListWidgetItem* item = contents_->currentItem();
    const QString file = item ? item->data(Qt::UserRole).toString() : QString();
    if (!file.isEmpty()) Open({file, {}});
}

void HelpWindow::ShowTopic(int topic, const QString& section)
{
    const QString file = QString::number(topic) + u".html"_qs;
    const bool known = QFile::exists(folder_ + u'/' + file);
    wanted_->clear();
    Open({known || pages_.empty() ? file : pages_.front().file, section});
    show();
    raise();
    activateWindow();
    page_->setFocus();
}

void HelpWindow::Open(const Place& place)
{
    const bool again = !visited_.empty() && visited_[here_] == place;
    if (!again) {
        if (!visited_.empty()) visited_.resize(++here_);
        visited_.push_back(place);
        here_ = visited_.size() - 1;
    }
    Show();
}

void HelpWindow::Show()
{
    const Place& place = visited_[here_];
    page_->ShowPage(folder_ + u'/' + place.file, place.anchor);
    back_->setEnabled(here_ > 0);
    forward_->setEnabled(here_ + 1 < visited_.size());
    const QSignalBlocker quiet(contents_);
    for (int row = 0; row < contents_->count(); ++row)
        if (contents_->item(row)->data(Qt::UserRole) == place.file) contents_->setCurrentRow(row);
}

void HelpWindow::Back()
{
    if (here_ == 0) return;
    --here_;
    Show();
}

void HelpWindow::Forward()
{
    if (here_ + 1 >= visited_.size()) return;
    ++here_;
    Show();
}

void HelpWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) return hide();
    if (event->matches(QKeySequence::Back)) return Back();
    if (event->matches(QKeySequence::Forward)) return Forward();
    if (event->matches(QKeySequence::ZoomIn)) return Larger();
    if (event->matches(QKeySequence::ZoomOut)) return Smaller();
    if (event->matches(QKeySequence::Find)) return wanted_->setFocus();
    QWidget::keyPressEvent(event);
}
