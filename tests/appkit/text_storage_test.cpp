#include <zrbasic/platform/appkit/text_storage.h>

#include "../foundation/checks.h"
#include "text_toolkit.h"

#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace zr {
namespace {

using test::raisedName;
using test::TextToolkit;

Ref<NSTextStorage> storage(NSString* text) {
    return make<NSTextStorage>(&NSAttributedString::initWithString, text);
}

Ref<NSAttributedString> styled(NSString* text) {
    return make<NSAttributedString>(&NSAttributedString::initWithString, text);
}

TEST(TextStorage, isReadFromHtmlInUtf8ByTheToolkit) {
    TextToolkit toolkit;
    Ref<NSDictionary> attributes;
    const auto text = make<NSTextStorage>(&NSTextStorage::initWithHTML_documentAttributes,
                                          NSData::fromBytes("<b>4 €</b>"), &attributes);
    EXPECT_EQ(toolkit.lastHTML, "<b>4 €</b>");
    EXPECT_EQ(text->string()->utf8(), "read: <b>4 €</b>");
    EXPECT_EQ(attributes, nullptr);
    const auto broken =
        make<NSTextStorage>(&NSTextStorage::initWithHTML_documentAttributes, NSData::fromBytes("a\xff\xfe"), nullptr);
    EXPECT_EQ(toolkit.lastHTML, "a\uFFFD\uFFFD");
    EXPECT_EQ(make<NSTextStorage>(&NSTextStorage::initWithHTML_documentAttributes, nullptr, nullptr)->string()->utf8(),
              "read: ");
}

TEST(TextStorage, isTheHtmlItselfWithoutAToolkit) {
    const auto text =
        make<NSTextStorage>(&NSTextStorage::initWithHTML_documentAttributes, NSData::fromBytes("<b>x</b>"), nullptr);
    EXPECT_EQ(text->string()->utf8(), "<b>x</b>");
    EXPECT_EQ(make<NSTextStorage>(&NSTextStorage::initWithHTML_documentAttributes, nullptr, nullptr)->length(), 0u);
}

TEST(TextStorage, tellsItsLayoutManagersViewOfEveryChange) {
    TextToolkit toolkit;
    const auto view = make<NSTextView>();
    const auto text = storage("abc"_ns);
    view->layoutManager()->replaceTextStorage(text);
    view->ensurePeer();
    const auto bold = dictionary({{"weight"_ns, box(1)}});
    struct {
        const char* name;
        std::function<void()> change;
    } const rows[] = {
        {"append", [&] { text->appendAttributedString(styled("d"_ns)); }},
        {"append itself", [&] { text->appendAttributedString(text); }},
        {"append units", [&] { text->append(u"e", bold); }},
        {"insert", [&] { text->insertAttributedString_atIndex(styled("f"_ns), 0); }},
        {"replace",
         [&] {
             text->replaceCharactersInRange_withString({0, 1}, "g"_ns);
         }},
        {"delete",
         [&] {
             text->deleteCharactersInRange({0, 1});
         }},
        {"add an attribute",
         [&] {
             text->addAttribute_value_range("weight"_ns, box(2), {0, 1});
         }},
        {"add attributes",
         [&] {
             text->addAttributes_range(bold, {0, 1});
         }},
        {"set attributes",
         [&] {
             text->setAttributes_range(nullptr, {0, 1});
         }},
        {"remove an attribute",
         [&] {
             text->removeAttribute_range("weight"_ns, {0, 1});
         }},
        {"set everything", [&] { text->setAttributedString(styled("new"_ns)); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        toolkit.taken();
        row.change();
        EXPECT_EQ(toolkit.taken(), "content\nlayout\ndisplay\n");
    }
    EXPECT_EQ(view->string()->utf8(), "new");
}

TEST(TextStorage, tellsNobodyOfWhatFailed) {
    TextToolkit toolkit;
    const auto view = make<NSTextView>();
    view->ensurePeer();
    toolkit.taken();
    const auto text = view->textStorage();
    EXPECT_EQ(raisedName([&] { text->appendAttributedString(nullptr); }), "NSInvalidArgumentException");
    EXPECT_EQ(raisedName([&] { text->deleteCharactersInRange({0, 1}); }), "NSRangeException");
    EXPECT_EQ(raisedName([&] {
                  text->replaceCharactersInRange_withString({NSNotFound, 5}, ""_ns);
              }),
              "NSRangeException");
    EXPECT_EQ(toolkit.taken(), "");
}

TEST(TextStorage, tellsEachOfSeveralViewsAndNotThoseThatHaveLeft) {
    TextToolkit toolkit;
    const auto text = storage("a"_ns);
    const auto one = make<NSTextView>();
    auto other = make<NSTextView>();
    one->layoutManager()->replaceTextStorage(text);
    other->layoutManager()->replaceTextStorage(text);
    EXPECT_EQ(text->layoutManagers()->count(), 2u);
    one->ensurePeer();
    other->ensurePeer();
    toolkit.taken();
    text->appendAttributedString(styled("b"_ns));
    EXPECT_EQ(toolkit.taken(), "content\nlayout\ndisplay\ncontent\nlayout\ndisplay\n");
    EXPECT_EQ(other->string()->utf8(), "ab");

    one->layoutManager()->replaceTextStorage(nullptr);
    toolkit.taken();
    text->appendAttributedString(styled("c"_ns));
    EXPECT_EQ(toolkit.taken(), "content\nlayout\ndisplay\n");
    EXPECT_EQ(one->string()->utf8(), "");

    other = nullptr;
    toolkit.taken();
    text->appendAttributedString(styled("d"_ns));
    EXPECT_EQ(toolkit.taken(), "");
    EXPECT_EQ(text->layoutManagers()->count(), 0u);
}

TEST(TextStorage, givesCopiesThatTellNobody) {
    TextToolkit toolkit;
    const auto view = make<NSTextView>();
    view->setString("a"_ns);
    view->ensurePeer();
    toolkit.taken();
    const Ref<NSMutableAttributedString> copy = cast<NSMutableAttributedString>(view->textStorage()->mutableCopy());
    ASSERT_NE(copy, nullptr);
    copy->appendAttributedString(styled("b"_ns));
    EXPECT_EQ(toolkit.taken(), "");
    EXPECT_EQ(view->string()->utf8(), "a");
}

} // namespace
} // namespace zr
