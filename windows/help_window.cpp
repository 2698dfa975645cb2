#include "windows/help_window.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

#include "windows/link_label.h"
#include "windows/palette_colours.h"
#include "windows/screen_room.h"

static void load_manual() {
    Q_INIT_RESOURCE(manual);
}

namespace nimbry::windows {
namespace {

constexpr std::array pages{
    HelpPage{"first-steps.md", "First steps"},
    HelpPage{"install.md", "Installing Nimbry"},
    HelpPage{"connecting.md", "Connecting the station"},
    HelpPage{"nothing-arrives.md", "When nothing arrives"},
    HelpPage{"main-window.md", "The main window"},
    HelpPage{"dialogs.md", "The dialogs"},
    HelpPage{"records.md", "What is kept"},
    HelpPage{"publishing.md", "Publishing the weather"},
    HelpPage{"templates.md", "Templates"},
    HelpPage{"tags.md", "The tags of the templates"},
    HelpPage{"several-machines.md", "Several machines"},
    HelpPage{"service.md", "Running without a window"},
    HelpPage{"nimbryctl.md", "nimbryctl"},
    HelpPage{"messages.md", "What messages mean"},
};

QString file_of(const HelpPage& page) {
    return QString::fromLatin1(page.file);
}

/// Where the pages lie, and where their names of pictures begin.
QString manual_folder() {
    return QStringLiteral(":/%1/").arg(QString::fromLatin1(help_file));
}

QString html_name(const HelpPage& page) {
    return file_of(page).replace(QStringLiteral(".md"), QStringLiteral(".html"));
}

/// A page's text as a reader sees it, without the marks of its format.
QString plain_text(const HelpPage& page) {
    QTextDocument document;
    document.setMarkdown(page_source(page));
    return document.toPlainText();
}

/// What a link calls a heading: "The serial port" is "the-serial-port".
QString heading_name(const QString& heading) {
    QString name;
    for (const QChar letter : heading.toLower()) {
        if (letter == u' ') name.append(u'-');
        if (letter.isLetterOrNumber() || letter == u'-' || letter == u'_') name.append(letter);
    }
    return name;
}

/// The headings of a page, in their order.
std::vector<QTextBlock> headings_of(const QTextDocument& document) {
    std::vector<QTextBlock> headings;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() > 0) headings.push_back(block);
    return headings;
}

/// Gives the headings in a page's HTML their names, for links to lead to.
void name_headings(QString& html, const QTextDocument& document) {
    qsizetype at = 0;
    for (const QTextBlock& heading : headings_of(document)) {
        const QString mark = QStringLiteral("<h%1").arg(heading.blockFormat().headingLevel());
        at = html.indexOf(mark, at) + mark.size();
        html.insert(at, QStringLiteral(" id=\"%1\"").arg(heading_name(heading.text())));
    }
}

/// Tables with room in their cells and one quiet line between them.
void set_tables(QTextDocument& document, const QColor& line) {
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr) continue;
        QTextTableFormat format = table->format();
        format.setBorderCollapse(true);
        format.setBorder(1);
        format.setBorderBrush(line);
        format.setCellSpacing(0);
        format.setCellPadding(5);
        format.setTopMargin(8);
        format.setBottomMargin(12);
        table->setFormat(format);
    }
}

/// Links in a colour of the theme, and pictures no wider than the page, in their own shape. A page does not smooth what
/// it scales: a picture is made in its size for the pixels of the screen, `ratio` to one of the page.
void set_pieces(QTextDocument& document, const QColor& link, qreal ratio) {
    constexpr int widest = 604;
    struct Change {
        int from, to;
        QTextCharFormat format;
    };
    std::vector<Change> changes;
    // Made afterwards: giving one piece another format makes the others anew.
    const auto look_at = [&](const QTextFragment& piece) {
        const int end = piece.position() + piece.length();
        QTextCharFormat format = piece.charFormat();
        if (QTextImageFormat picture = format.toImageFormat(); picture.isValid()) {
            const QImage image(manual_folder() + picture.name());
            const QSize size = image.size();
            if (size.width() <= widest) return;
            QImage smaller = image.convertToFormat(QImage::Format_RGB32)
                                 .scaledToWidth(qRound(widest * ratio), Qt::SmoothTransformation);
            smaller.setDevicePixelRatio(ratio);
            document.addResource(QTextDocument::ImageResource, document.baseUrl().resolved(QUrl(picture.name())),
                                 smaller);
            picture.setWidth(widest);
            picture.setHeight(1.0 * widest * size.height() / size.width());
            changes.push_back({piece.position(), end, picture});
        } else if (format.isAnchor()) {
            format.setForeground(link);
            changes.push_back({piece.position(), end, format});
        }
    };
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at) look_at(at.fragment());
    QTextCursor cursor(&document);
    for (const Change& change : changes) {
        cursor.setPosition(change.from);
        cursor.setPosition(change.to, QTextCursor::KeepAnchor);
        cursor.setCharFormat(change.format);
    }
}

}  // namespace

std::span<const HelpPage> help_pages() {
    return pages;
}

QString page_source(const HelpPage& page) {
    load_manual();
    QFile file(manual_folder() + file_of(page));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString page_as_html(const HelpPage& page) {
    QTextDocument document;
    document.setMarkdown(page_source(page));
    QString html = document.toHtml();
    name_headings(html, document);
    QStringList links;
    for (const HelpPage& each : pages) {
        html.replace(QStringLiteral("href=\"%1").arg(file_of(each)), QStringLiteral("href=\"%1").arg(html_name(each)));
        links.append(QStringLiteral("<a href=\"%1\">%2</a>").arg(html_name(each), QString::fromLatin1(each.title)));
    }
    const QString head = QStringLiteral("<head><title>Nimbry: %1</title>").arg(QString::fromLatin1(page.title));
    const QString looks = QStringLiteral(
        "<style>:root { color-scheme: light dark } body { max-width: 46em; margin: 2em auto; padding: 0 1em; "
        "line-height: 1.5 } img { max-width: 100%; height: auto } td, th { padding: 0.2em 0.6em }</style></head>");
    html.replace(QStringLiteral("<head>"), head).replace(QStringLiteral("</head>"), looks);
    const qsizetype body = html.indexOf(u'>', html.indexOf(QStringLiteral("<body"))) + 1;
    return html.insert(body, QStringLiteral("<p>%1</p><hr>").arg(links.join(QStringLiteral(" \u00B7 "))));
}

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("NimbryHelp"));
    setWindowTitle(QStringLiteral("Nimbry Help"));
    pages_.setObjectName(QStringLiteral("lstPages"));
    pages_.setFrameShape(QFrame::NoFrame);
    pages_.setSpacing(3);
    pages_.setAccessibleName(QStringLiteral("Pages"));
    page_.setObjectName(QStringLiteral("txtPage"));
    page_.setAccessibleName(QStringLiteral("Page"));
    page_.setOpenLinks(false);
    page_.setFrameShape(QFrame::NoFrame);
    for (const HelpPage& page : pages) pages_.addItem(QString::fromLatin1(page.title));

    auto* parts = new QSplitter;
    parts->setChildrenCollapsible(false);
    parts->addWidget(&pages_);
    parts->addWidget(&page_);
    parts->setStretchFactor(1, 1);
    parts->setSizes({220, 680});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(8);
    column->addWidget(search_row());
    column->addWidget(parts, 1);
    resize(size_on_screen({900, 620}, *this));

    connect(&pages_, &QListWidget::currentRowChanged, this, &HelpWindow::show_row);
    connect(&page_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { show_page(link.toString()); });
    connect(&find_, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(&find_, &QLineEdit::returnPressed, this, &HelpWindow::find_next);
    connect(new QShortcut(QKeySequence::FindNext, this), &QShortcut::activated, this, &HelpWindow::find_next);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        find_.setFocus();
        find_.selectAll();
    });
    pages_.setCurrentRow(0);
}

QWidget* HelpWindow::search_row() {
    find_.setObjectName(QStringLiteral("txtFind"));
    find_.setPlaceholderText(QStringLiteral("Find in all pages"));
    find_.setAccessibleName(find_.placeholderText());
    find_.setClearButtonEnabled(true);
    none_.setObjectName(QStringLiteral("lblNone"));
    none_.setText(QStringLiteral("No page has that."));
    none_.hide();
    auto* browser = new QPushButton(QStringLiteral("&Read in the browser"));
    browser->setObjectName(QStringLiteral("cmdBrowser"));
    connect(browser, &QPushButton::clicked, this, [this] {
        if (const QString path = file_for_browser(); !path.isEmpty()) emit asked_for(path);
    });
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(&find_, 1);
    row->addWidget(&none_);
    row->addWidget(browser);
    return bar;
}

void HelpWindow::show_page(const QString& link) {
    const QString file = link.section(u'#', 0, 0), heading = link.section(u'#', 1);
    for (int row = 0; row < pages_.count(); ++row) {
        if (file_of(pages[static_cast<std::size_t>(row)]) != file) continue;
        pages_.setCurrentRow(row);
        show_heading(heading);
    }
}

void HelpWindow::show_heading(const QString& name) {
    const std::vector<QTextBlock> headings = headings_of(*page_.document());
    const auto found = std::find_if(headings.begin(), headings.end(),
                                    [&](const QTextBlock& heading) { return heading_name(heading.text()) == name; });
    if (found == headings.end()) return;
    page_.setTextCursor(QTextCursor(*found));
    page_.verticalScrollBar()->setValue(qRound(page_.document()->documentLayout()->blockBoundingRect(*found).top()));
}

void HelpWindow::show_row(int row) {
    if (row < 0) return;
    // Filled before it is shown: a document on the screen would be laid out again with every word that comes.
    auto* document = new QTextDocument(&page_);
    document->setDefaultFont(page_.font());
    document->setDocumentMargin(20);
    document->setBaseUrl(QUrl(QStringLiteral("qrc") + manual_folder()));
    document->setMarkdown(page_source(pages[static_cast<std::size_t>(row)]));
    set_pieces(*document, link_colour(is_dark(palette()), false), devicePixelRatioF());
    set_tables(*document, panel_line(palette()));
    page_.setDocument(document);
    page_.moveCursor(QTextCursor::Start);
    mark_places();
}

void HelpWindow::search() {
    const QString text = find_.text();
    if (texts_.empty()) std::transform(pages.begin(), pages.end(), std::back_inserter(texts_), plain_text);
    int first = -1;
    for (int row = 0; row < pages_.count(); ++row) {
        const bool has = texts_[static_cast<std::size_t>(row)].contains(text, Qt::CaseInsensitive);
        pages_.item(row)->setHidden(!has);
        if (has && first < 0) first = row;
    }
    none_.setVisible(first < 0);
    const bool leaves = pages_.currentItem() == nullptr || pages_.currentItem()->isHidden();
    if (leaves && first >= 0) pages_.setCurrentRow(first);
    page_.moveCursor(QTextCursor::Start);
    mark_places();
    if (!text.isEmpty()) page_.find(text);
}

void HelpWindow::find_next() {
    const QString text = find_.text();
    if (text.isEmpty() || page_.find(text)) return;
    if (const int row = next_row(); row >= 0) {
        pages_.setCurrentRow(row);
        page_.moveCursor(QTextCursor::Start);
        page_.find(text);
    }
}

/// The next page that the search has left in the list, from the last on the first again; -1 for none.
int HelpWindow::next_row() const {
    for (int step = 1; step <= pages_.count(); ++step) {
        const int row = (pages_.currentRow() + step) % pages_.count();
        if (!pages_.item(row)->isHidden()) return row;
    }
    return -1;
}

void HelpWindow::mark_places() {
    QList<QTextEdit::ExtraSelection> places;
    if (!find_.text().isEmpty()) {
        QColor back = palette().color(QPalette::Highlight);
        back.setAlphaF(0.35F);
        for (QTextCursor at(page_.document()); !(at = page_.document()->find(find_.text(), at)).isNull();) {
            QTextEdit::ExtraSelection place;
            place.cursor = at;
            place.format.setBackground(back);
            places.append(place);
        }
    }
    page_.setExtraSelections(places);
}

QString HelpWindow::file_for_browser() {
    if (!files_) {
        files_.emplace();
        for (const HelpPage& page : pages) {
            QFile file(files_->filePath(html_name(page)));
            if (!file.open(QIODevice::WriteOnly)) continue;
            file.write(page_as_html(page).toUtf8());
        }
        const QDir pictures(manual_folder() + QStringLiteral("pictures"));
        QDir(files_->path()).mkpath(QStringLiteral("pictures"));
        for (const QString& name : pictures.entryList())
            QFile::copy(pictures.filePath(name), files_->filePath(QStringLiteral("pictures/") + name));
    }
    const QString path = files_->filePath(html_name(pages[static_cast<std::size_t>(pages_.currentRow())]));
    return QFile::exists(path) ? path : QString();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (!find_.text().isEmpty()) {
        find_.clear();
    } else {
        close();
    }
}

}  // namespace nimbry::windows
