#include "field_testing.h"
#include "pictures.h"

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/text_attachment.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/ui/html_label.h>

#include <QDesktopServices>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QToolTip>
#include <QVBoxLayout>

#include <cmath>

namespace zr::test {
namespace {

class HtmlLabel : public FieldWindow {
  protected:
    void SetUp() override {
        label = add<ZRXHTMLLabel>({{10, 20}, {300, 130}});
        show();
        label->setLinkClickAction([this](NSObject* link, NSUInteger index) {
            ++clicks;
            clicked = Ref<NSObject>(link);
            at = index;
        });
    }

    QTextBrowser* browser() const { return qt::widget(window.get())->findChild<QTextBrowser*>(); }
    /// In the middle of a character, in the window's pixels.
    QPoint pixelAt(int index) const {
        QTextCursor cursor(browser()->document());
        cursor.setPosition(index);
        const QRect before = browser()->cursorRect(cursor);
        cursor.setPosition(index + 1);
        const QRect behind = browser()->cursorRect(cursor);
        const QPoint middle((before.center().x() + behind.center().x()) / 2, before.center().y());
        return browser()->viewport()->mapTo(qt::widget(window.get()), middle);
    }
    void click(int index) { QTest::mouseClick(handle(), Qt::LeftButton, {}, pixelAt(index)); }

    Ref<ZRXHTMLLabel> label;
    int clicks = 0;
    id clicked;
    NSUInteger at = 0;
};

TEST_F(HtmlLabel, showsWhatTheHtmlSays) {
    label->setHTMLString("Plain <b>bold</b><br><a href=\"https://example.com/\">link</a>"_ns);
    EXPECT_EQ(utf8(label->string()), "Plain bold\nlink");
    QTextDocument* const document = browser()->document();
    EXPECT_EQ(document->toPlainText().toStdString(), "Plain bold\nlink");
    QTextCursor cursor(document);
    cursor.setPosition(8);
    EXPECT_GT(cursor.charFormat().fontWeight(), int(QFont::Normal));
    cursor.setPosition(3);
    EXPECT_EQ(cursor.charFormat().fontWeight(), int(QFont::Normal));
    cursor.setPosition(13);
    EXPECT_EQ(cursor.charFormat().anchorHref(), "https://example.com/");
    EXPECT_EQ(document->blockCount(), 2);
}

TEST_F(HtmlLabel, aClickOnALinkTellsTheIndexOfTheCharacter) {
    label->setHTMLString(
        "See <a href=\"https://example.com/a\">these</a> or <a href=\"https://example.com/b\">those</a>"_ns);
    click(6);
    ASSERT_EQ(clicks, 1);
    EXPECT_EQ(at, 6u);
    ASSERT_NE(cast<NSURL>(clicked.get()), nullptr);
    EXPECT_EQ(utf8(cast<NSURL>(clicked.get())->absoluteString()), "https://example.com/a");
    click(4);
    EXPECT_EQ(at, 4u);
    click(15);
    EXPECT_EQ(clicks, 3);
    EXPECT_EQ(at, 15u);
    EXPECT_EQ(utf8(cast<NSURL>(clicked.get())->absoluteString()), "https://example.com/b");
    click(1);
    click(10);
    EXPECT_EQ(clicks, 3);
}

TEST_F(HtmlLabel, linksOfTheReducedReaderAreClickedLikewise) {
    label->setCustomizedHTMLString("First line\n<b> <a href=\"https://example.com/x\">go</a>"_ns);
    EXPECT_EQ(utf8(label->string()), "First line\n<b> go");
    click(15);
    ASSERT_EQ(clicks, 1);
    EXPECT_EQ(at, 15u);
    click(16);
    EXPECT_EQ(at, 16u);
}

TEST_F(HtmlLabel, aPressThatEndsElsewhereIsNoClick) {
    label->setHTMLString(
        "<a href=\"https://example.com/a\">these</a> and <a href=\"https://example.com/b\">those</a>"_ns);
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixelAt(1));
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixelAt(12));
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(handle(), Qt::RightButton, {}, pixelAt(1));
    EXPECT_EQ(clicks, 0);
    if (QWidget* const menu = QApplication::activePopupWidget()) {
        menu->close();
    }
}

class UrlCatcher : public QObject {
    Q_OBJECT
  public Q_SLOTS:
    void open(const QUrl& url) { opened << url; }

  public:
    QList<QUrl> opened;
};

TEST_F(HtmlLabel, withoutAnActionTheDesktopOpensTheLink) {
    label->setLinkClickAction({});
    label->setHTMLString("<a href=\"https://example.com/a\">these</a>"_ns);
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler("https", &catcher, "open");
    click(2);
    QDesktopServices::unsetUrlHandler("https");
    ASSERT_EQ(catcher.opened.size(), 1);
    EXPECT_EQ(catcher.opened.front(), QUrl("https://example.com/a"));
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(utf8(label->string()), "these");
}

TEST_F(HtmlLabel, theHandShowsOverLinksOnly) {
    label->setHTMLString("See <a href=\"https://example.com/a\">these</a> there"_ns);
    QTest::mouseMove(handle(), pixelAt(6));
    EXPECT_TRUE(eventually([this] { return browser()->viewport()->cursor().shape() == Qt::PointingHandCursor; }));
    QTest::mouseMove(handle(), pixelAt(12));
    EXPECT_TRUE(eventually([this] { return browser()->viewport()->cursor().shape() == Qt::IBeamCursor; }));
}

TEST_F(HtmlLabel, linksHaveAToolTipOnlyWhereThatIsWanted) {
    label->setHTMLString("<a href=\"https://example.com/a\">these</a>"_ns);
    const QPoint inViewport = browser()->viewport()->mapFrom(qt::widget(window.get()), pixelAt(2));
    QHelpEvent event(QEvent::ToolTip, inViewport, browser()->viewport()->mapToGlobal(inViewport));
    QApplication::sendEvent(browser()->viewport(), &event);
    EXPECT_EQ(QToolTip::text(), "");
    label->setDisplaysLinkToolTips(true);
    QApplication::sendEvent(browser()->viewport(), &event);
    EXPECT_EQ(QToolTip::text(), "https://example.com/a");
    QToolTip::hideText();
}

TEST_F(HtmlLabel, blanksLeaveWhatWasThere) {
    label->setHTMLString("before"_ns);
    label->setHTMLString("   "_ns);
    label->setCustomizedHTMLString(nullptr);
    EXPECT_EQ(browser()->document()->toPlainText().toStdString(), "before");
}

TEST_F(HtmlLabel, theNaturalSizeIsWhatTheDocumentTakes) {
    label->setHTMLString("One line<br>and a much longer second line"_ns);
    const NSSize natural = label->intrinsicContentSize();
    const QTextDocument* const document = browser()->document();
    // Qt's own width may be a pixel more.
    EXPECT_NEAR(natural.width, document->idealWidth(), 1);
    EXPECT_NEAR(natural.height, document->size().height(), 0.5);
    label->setHTMLString("One line"_ns);
    EXPECT_LT(label->intrinsicContentSize().width, natural.width);
    EXPECT_NEAR(label->intrinsicContentSize().height, natural.height / 2, 0.5);
}

TEST_F(HtmlLabel, anEmptyLabelIsTwentyPointsInALayout) {
    const auto empty = make<ZRXHTMLLabel>(&ZRXHTMLLabel::initWithFrame, NSZeroRect);
    EXPECT_EQ(empty->intrinsicContentSize(), NSZeroSize);
    QWidget host;
    QVBoxLayout layout(&host);
    layout.setContentsMargins(0, 0, 0, 0);
    QWidget* const widget = qt::widget(empty.get());
    layout.addWidget(widget, 0, Qt::AlignLeft | Qt::AlignTop);
    host.resize(200, 100);
    host.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&host));
    EXPECT_EQ(widget->size(), QSize(20, 20));
    empty->setHTMLString("A text that is wider than that"_ns);
    const NSSize natural = empty->intrinsicContentSize();
    EXPECT_TRUE(eventually([&] { return widget->width() == int(std::ceil(natural.width)); }));
    EXPECT_EQ(widget->height(), std::max(20, int(std::ceil(natural.height))));
    EXPECT_EQ(empty->frame().size.width, widget->width());
}

TEST_F(HtmlLabel, showsNoBackgroundAndNoFrame) {
    label->setHTMLString("x"_ns);
    const QImage all = pictureOf(*qt::widget(window.get()));
    const QColor outside = all.pixelColor(2, 2);
    EXPECT_EQ(all.pixelColor(300, 100), outside);
    EXPECT_EQ(all.pixelColor(10, 10), outside);
}

/// Counts presses, and does with them what a text view does.
class CountingHtmlLabel : public ZRXHTMLLabel {
    ZR_OBJECT(CountingHtmlLabel, ZRXHTMLLabel)
  public:
    void pressed(NSEvent*) { ++presses; }
    ZR_METHOD(pressed, "mouseDown:")

    int presses = 0;
};

TEST_F(HtmlLabel, aReplacedMouseDownIsHonoured) {
    label->removeFromSuperview();
    const auto counting = add<CountingHtmlLabel>({{10, 20}, {300, 130}});
    counting->setHTMLString("<a href=\"https://example.com/a\">these</a>"_ns);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    counting->setLinkClickAction([this](NSObject*, NSUInteger) { ++clicks; });
    click(1);
    EXPECT_EQ(counting->presses, 1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(HtmlLabel, cannotBeTypedInto) {
    label->setHTMLString("text"_ns);
    click(1);
    QTest::keyClicks(focused() ? focused() : browser(), "zzz");
    EXPECT_EQ(utf8(label->string()), "text");
    EXPECT_EQ(browser()->document()->toPlainText().toStdString(), "text");
}

TEST_F(HtmlLabel, whatIsSelectedIsKnownAndCanBeCopied) {
    label->setHTMLString("one two"_ns);
    QTest::mouseDClick(handle(), Qt::LeftButton, {}, pixelAt(5));
    EXPECT_EQ(label->selectedRange(), NSMakeRange(4, 3));
    EXPECT_EQ(window->firstResponder(), label);
    label->setSelectedRange(NSMakeRange(0, 3));
    EXPECT_EQ(browser()->textCursor().selectedText(), "one");
}

TEST_F(HtmlLabel, imagesStandOnTheLineAsTheirCellsSay) {
    const auto image = make<NSImage>(&NSImage::initWithSize, NSSize{10, 10});
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(10, 10);
    for (NSInteger y = 0; y < 10; ++y) {
        for (NSInteger x = 0; x < 10; ++x) {
            bitmap->setColor_atX_y(NSColor::redColor(), x, y);
        }
    }
    image->addRepresentation(bitmap);
    const auto attachment = make<NSTextAttachment>(&NSTextAttachment::initWithData_ofType, nullptr, nullptr);
    attachment->setAttachmentCell(make<NSTextAttachmentCell>(&NSTextAttachmentCell::initImageCell, image));
    const auto storage = make<NSTextStorage>(&NSAttributedString::initWithString, NSString::fromUtf16(u"ab\uFFFC"));
    storage->addAttribute_value_range(NSAttachmentAttributeName(), attachment, {2, 1});
    storage->addAttribute_value_range(NSLinkAttributeName(), "https://example.com/i"_ns, {2, 1});
    label->layoutManager()->replaceTextStorage(storage);
    const QImage all = pictureOf(*qt::widget(window.get()));
    int red = 0;
    for (int y = 0; y < all.height(); ++y) {
        for (int x = 0; x < all.width(); ++x) {
            red += all.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
        }
    }
    EXPECT_EQ(red, 100);
    click(2);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(at, 2u);
}

TEST_F(HtmlLabel, placesInTheTextAndOnTheScreenAreTheSame) {
    const auto storage = make<NSTextStorage>(&NSAttributedString::initWithString,
                                             NSString::fromUtf16(std::u16string(u"a\r\nb\u2028c\u0085\uFDD0\uFFFCz")));
    storage->addAttribute_value_range(NSLinkAttributeName(), "https://example.com/z"_ns, {storage->length() - 1, 1});
    label->layoutManager()->replaceTextStorage(storage);
    EXPECT_EQ(browser()->document()->characterCount() - 1, int(storage->length()));
    click(int(storage->length()) - 1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(at, storage->length() - 1);
}

} // namespace
} // namespace zr::test

#include "html_label_test.moc"
