#include <zrbasic/platform/appkit/text_input_context.h>

#include "toolkit_testing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace zr {
namespace {

using test::KeyboardToolkit;

std::string selected() {
    const Ref<NSString> source = NSTextInputContext::currentInputContext()->selectedKeyboardInputSource();
    return source ? source->utf8() : "nothing";
}

TEST(TextInputContext, isThereWhenTheDesktopTellsItsLayouts) {
    EXPECT_EQ(NSTextInputContext::currentInputContext(), nullptr) << "there is no toolkit";
    {
        const KeyboardToolkit none({}, -1);
        EXPECT_EQ(NSTextInputContext::currentInputContext(), nullptr);
    }
    const KeyboardToolkit toolkit({"us"}, 0);
    const auto context = NSTextInputContext::currentInputContext();
    ASSERT_TRUE(context);
    EXPECT_EQ(NSTextInputContext::currentInputContext(), context);
    EXPECT_EQ(send<id>(NSTextInputContext::classObject(), "currentInputContext"_sel), context);
}

TEST(TextInputContext, namesLayoutsAsInputSources) {
    const KeyboardToolkit toolkit({"de", "us", "us(intl)", "US", ""}, 0);
    const auto sources = NSTextInputContext::currentInputContext()->keyboardInputSources();
    EXPECT_TRUE(sources->isEqual(
        array({"com.apple.keylayout.de"_ns, "com.apple.keylayout.ABC"_ns, "com.apple.keylayout.us(intl)"_ns,
               "com.apple.keylayout.US"_ns, "com.apple.keylayout."_ns})))
        << sources->description()->utf8();
}

TEST(TextInputContext, selectsAmongItsSources) {
    KeyboardToolkit toolkit({"de", "us", "us"}, 0);
    const auto context = NSTextInputContext::currentInputContext();
    EXPECT_EQ(selected(), "com.apple.keylayout.de");
    context->setSelectedKeyboardInputSource("com.apple.keylayout.ABC"_ns);
    EXPECT_EQ(selected(), "com.apple.keylayout.ABC");
    EXPECT_EQ(toolkit.currentKeyboardLayout(), 1) << "the first of two alike";
    send<void>(context, "setSelectedKeyboardInputSource:"_sel, "com.apple.keylayout.de"_ns);
    EXPECT_EQ(send<Ref<NSString>>(context, "selectedKeyboardInputSource"_sel)->utf8(), "com.apple.keylayout.de");
}

TEST(TextInputContext, ignoresWhatIsNoSource) {
    KeyboardToolkit toolkit({"de", "us"}, 0);
    const auto context = NSTextInputContext::currentInputContext();
    for (const Ref<NSString>& source : {"us"_ns, "com.apple.keylayout.us"_ns, "com.apple.keylayout.abc"_ns,
                                        "com.apple.keylayout.fr"_ns, "com.apple.keylayout.ABC "_ns, ""_ns}) {
        SCOPED_TRACE(source->utf8());
        context->setSelectedKeyboardInputSource(source);
        EXPECT_EQ(toolkit.currentKeyboardLayout(), 0);
    }
    context->setSelectedKeyboardInputSource(nullptr);
    send<void>(context, "setSelectedKeyboardInputSource:"_sel, NSNull::null());
    EXPECT_EQ(toolkit.currentKeyboardLayout(), 0);
}

TEST(TextInputContext, selectsNothingWhenTheDesktopDoesNotTell) {
    for (const NSInteger current :
         {NSInteger{-1}, NSInteger{2}, std::numeric_limits<NSInteger>::max(), std::numeric_limits<NSInteger>::min()}) {
        SCOPED_TRACE(current);
        const KeyboardToolkit toolkit({"de", "us"}, current);
        EXPECT_EQ(selected(), "nothing");
    }
    Ref<NSTextInputContext> context;
    {
        const KeyboardToolkit toolkit({"de"}, 0);
        context = NSTextInputContext::currentInputContext();
    }
    EXPECT_EQ(context->selectedKeyboardInputSource(), nullptr) << "the toolkit has gone";
    EXPECT_EQ(context->keyboardInputSources()->count(), 0U);
    context->setSelectedKeyboardInputSource("com.apple.keylayout.de"_ns);
}

} // namespace
} // namespace zr
