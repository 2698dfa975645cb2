#include "windows/help_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSet>
#include <QTest>
#include <QTextBlock>

#include "tests/windows/screens.h"
#include "windows/link_label.h"
#include "windows/palette_colours.h"

namespace nimbry::test {
namespace {

using namespace nimbry::windows;

class Help : public testing::Test {
protected:
    Help() { window.show(); }

    [[nodiscard]] QListWidget* list() const { return window.findChild<QListWidget*>("lstPages"); }
    [[nodiscard]] QTextBrowser* page() const { return window.findChild<QTextBrowser*>("txtPage"); }
    [[nodiscard]] QLineEdit* find() const { return window.findChild<QLineEdit*>("txtFind"); }
    [[nodiscard]] QStringList listed() const {
        QStringList titles;
        for (int row = 0; row < list()->count(); ++row)
            if (!list()->item(row)->isHidden()) titles.append(list()->item(row)->text());
        return titles;
    }
    [[nodiscard]] QString title() const { return list()->currentItem()->text(); }

    HelpWindow window;
};

TEST_F(Help, OpensWithItsFirstPage) {
    EXPECT_EQ(window.objectName(), "NimbryHelp");
    EXPECT_EQ(window.windowTitle(), "Nimbry Help");
    EXPECT_EQ(title(), "First steps");
    EXPECT_TRUE(page()->toPlainText().startsWith("First steps")) << page()->toPlainText().left(40).toStdString();
}

TEST_F(Help, IsTheManualUnderItsName) {
    QSet<QString> files;
    for (const HelpPage& each : help_pages()) files.insert(QString::fromLatin1(each.file));
    const QStringList held = QDir(QStringLiteral(":/NIMBRY.HLP")).entryList(QDir::Files);
    EXPECT_EQ(QSet<QString>(held.begin(), held.end()), files) << held.join(u' ').toStdString();
    EXPECT_STREQ(help_file, "NIMBRY.HLP");
}

TEST_F(Help, ShowsEachPageOfItsList) {
    ASSERT_EQ(list()->count(), static_cast<int>(help_pages().size()));
    for (int row = 0; row < list()->count(); ++row) {
        list()->setCurrentRow(row);
        const QString text = page()->toPlainText();
        EXPECT_TRUE(text.startsWith(title())) << title().toStdString();
        EXPECT_GT(text.size(), 500) << title().toStdString();
    }
}

TEST_F(Help, LeadsWithEveryLinkToAPageOfItsOwn) {
    QSet<QString> names;
    for (const HelpPage& each : help_pages()) names.insert(QString::fromLatin1(each.file));
    const QRegularExpression link(QStringLiteral("(?<!!)\\[[^\\]]*\\]\\(([^)#]+)"));
    int links = 0;
    for (const HelpPage& each : help_pages()) {
        for (auto found = link.globalMatch(page_source(each)); found.hasNext(); ++links) {
            const QString target = found.next().captured(1);
            EXPECT_TRUE(names.contains(target)) << each.file << " leads to " << target.toStdString();
        }
    }
    EXPECT_GE(links, 2);
    emit page()->anchorClicked(QUrl(QStringLiteral("tags.md")));
    EXPECT_EQ(title(), "The tags of the templates");
    emit page()->anchorClicked(QUrl(QStringLiteral("formats/ini.md")));
    EXPECT_EQ(title(), "The tags of the templates") << "a page that is not in the manual leaves it where it is";
}

TEST_F(Help, LeadsToTheHeadingThatALinkNames) {
    const QRegularExpression link(QStringLiteral("\\]\\(([^)#]+#[^)]+)\\)"));
    int links = 0;
    for (const HelpPage& each : help_pages()) {
        for (auto found = link.globalMatch(page_source(each)); found.hasNext(); ++links) {
            const QString target = found.next().captured(1);
            SCOPED_TRACE(each.file + (" leads to " + target.toStdString()));
            emit page()->anchorClicked(QUrl(target));
            QApplication::processEvents();
            const QString words = page()->textCursor().block().text().toLower().replace(u' ', u'-');
            EXPECT_EQ(words, target.section(u'#', 1));
            EXPECT_GT(page()->textCursor().block().blockFormat().headingLevel(), 0);
            // On top of the view, or as far up as the end of the page allows.
            const QScrollBar* bar = page()->verticalScrollBar();
            EXPECT_GT(bar->value(), 0);
            EXPECT_TRUE(page()->cursorRect().top() < 30 || bar->value() == bar->maximum());
            EXPECT_GE(page()->cursorRect().top(), 0);
        }
    }
    EXPECT_GE(links, 3);
    emit page()->anchorClicked(QUrl(QStringLiteral("messages.md#no-such-heading")));
    EXPECT_EQ(title(), "What messages mean");
    emit page()->anchorClicked(QUrl(QStringLiteral("tags.md#no-such-heading")));
    EXPECT_EQ(page()->textCursor().position(), 0) << "a page without that heading begins at its top";
}

TEST_F(Help, ShowsThePicturesOfItsPagesNoWiderThanThePage) {
    window.show_page("dialogs.md");
    int pictures = 0;
    for (QTextBlock block = page()->document()->begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextImageFormat format = at.fragment().charFormat().toImageFormat();
            if (!format.isValid()) continue;
            ++pictures;
            const QImage loaded(":/NIMBRY.HLP/" + format.name());
            EXPECT_FALSE(loaded.isNull()) << format.name().toStdString();
            const QVariant shown = page()->document()->resource(QTextDocument::ImageResource, QUrl(format.name()));
            EXPECT_FALSE(shown.isNull()) << format.name().toStdString();
            const bool is_wide = loaded.width() > 604;
            EXPECT_EQ(format.width(), is_wide ? 604 : 0) << format.name().toStdString();
            if (is_wide) {
                EXPECT_EQ(shown.value<QImage>().deviceIndependentSize().width(), 604) << format.name().toStdString();
            }
        }
    }
    EXPECT_GE(pictures, 15);
}

TEST_F(Help, ShowsLinksInAColourOfTheTheme) {
    for (const QPalette& palette : {QApplication::palette(), dark_palette()}) {
        window.setPalette(palette);
        window.show_page("connecting.md");
        window.show_page("first-steps.md");
        int links = 0;
        for (QTextBlock block = page()->document()->begin(); block.isValid(); block = block.next()) {
            for (auto at = block.begin(); !at.atEnd(); ++at) {
                const QTextCharFormat format = at.fragment().charFormat();
                if (!format.isAnchor()) continue;
                ++links;
                EXPECT_EQ(format.foreground().color(), link_colour(is_dark(palette), false))
                    << format.anchorHref().toStdString();
            }
        }
        EXPECT_GE(links, 5);
    }
}

TEST_F(Help, LeavesThePagesInTheListThatHaveWhatIsSought) {
    find()->setText(QStringLiteral("dialout"));
    EXPECT_EQ(listed(), (QStringList{"Installing Nimbry", "Connecting the station", "What messages mean"}));
    find()->setText(QStringLiteral("weboUTTemp"));
    EXPECT_TRUE(listed().contains("The tags of the templates")) << "in either case";
    EXPECT_FALSE(listed().contains("First steps"));
    EXPECT_TRUE(listed().contains(title())) << "the page that shows has it";
    EXPECT_EQ(page()->textCursor().selectedText().toLower(), "webouttemp");
    EXPECT_FALSE(page()->extraSelections().isEmpty());
    EXPECT_FALSE(window.findChild<QLabel*>("lblNone")->isVisible());
    find()->clear();
    EXPECT_EQ(listed().size(), list()->count());
    EXPECT_TRUE(page()->extraSelections().isEmpty());
}

TEST_F(Help, SaysWhenNoPageHasIt) {
    find()->setText(QStringLiteral("zzyzx"));
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(window.findChild<QLabel*>("lblNone")->isVisible());
    QTest::keyClick(find(), Qt::Key_Return);
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(Help, EnterGoesFromPlaceToPlaceAndOnToTheNextPage) {
    find()->setText(QStringLiteral("almanac"));
    const QString first = title();
    const int place = page()->textCursor().position();
    const qsizetype places = page()->extraSelections().size();
    ASSERT_GE(listed().size(), 2);
    for (qsizetype n = 1; n < places; ++n) QTest::keyClick(find(), Qt::Key_Return);
    EXPECT_EQ(title(), first);
    if (places > 1) {
        EXPECT_GT(page()->textCursor().position(), place);
    }
    QTest::keyClick(find(), Qt::Key_Return);
    EXPECT_EQ(title(), listed()[1]);
    EXPECT_TRUE(page()->textCursor().hasSelection());
}

TEST_F(Help, IsReadableWithABrowser) {
    QStringList asked;
    QObject::connect(&window, &HelpWindow::asked_for, [&](const QString& path) { asked.append(path); });
    window.show_page(QStringLiteral("publishing.md"));
    window.findChild<QPushButton*>("cmdBrowser")->click();
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].endsWith("/publishing.html"));
    const QDir folder = QFileInfo(asked[0]).dir();
    EXPECT_EQ(folder.entryList({"*.html"}).size(), list()->count());
    const QRegularExpression link(QStringLiteral("href=\"([^\"#:]+\\.html)"));
    int places = 0;
    for (const QString& name : folder.entryList({"*.html"})) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString html = QString::fromUtf8(file.readAll());
        EXPECT_TRUE(html.contains("<title>Nimbry: ")) << name.toStdString();
        int links = 0;
        for (auto found = link.globalMatch(html); found.hasNext(); ++links)
            EXPECT_TRUE(folder.exists(found.next().captured(1))) << name.toStdString();
        EXPECT_GE(links, list()->count()) << "at least one to each page: " << name.toStdString();
        const QRegularExpression place(QStringLiteral("href=\"([^\"#:]+\\.html)#([^\"]+)"));
        for (auto found = place.globalMatch(html); found.hasNext(); ++places) {
            const QRegularExpressionMatch match = found.next();
            QFile target(folder.filePath(match.captured(1)));
            ASSERT_TRUE(target.open(QIODevice::ReadOnly));
            EXPECT_TRUE(QString::fromUtf8(target.readAll())
                            .contains(QRegularExpression("<h[1-6] id=\"" + match.captured(2) + "\"")))
                << name.toStdString() << " leads to " << match.captured(0).toStdString();
        }
        const QRegularExpression picture(QStringLiteral("src=\"([^\"]+)"));
        for (auto found = picture.globalMatch(html); found.hasNext();)
            EXPECT_TRUE(folder.exists(found.next().captured(1))) << name.toStdString();
    }
    EXPECT_GE(places, 3);
}

TEST_F(Help, EscapeEndsTheSearchAndThenClosesTheWindow) {
    find()->setText(QStringLiteral("rain"));
    QTest::keyClick(find(), Qt::Key_Escape);
    EXPECT_EQ(find()->text(), "");
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace nimbry::test
