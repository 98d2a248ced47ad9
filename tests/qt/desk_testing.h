#pragma once

#include "field_testing.h"

#include <examples/desk/desk.h>
#include <examples/desk/look.h>

#include <zrbasic/platform/foundation/index_set.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/ui/application.h>

#include <QTableView>
#include <QTemporaryDir>

#include <fstream>
#include <optional>
#include <string>

namespace zr::test {

inline Ref<NSView> viewNamed(NSString* identifier, NSView* around) {
    if (identifier->isEqual(around->identifier())) {
        return Ref<NSView>(around);
    }
    for (const id& subview : around->subviews()) {
        if (const auto found = viewNamed(identifier, static_cast<NSView*>(subview.get()))) {
            return found;
        }
    }
    return nullptr;
}

/// The view of that name, which must be there.
template <class View>
Ref<View> named(NSString* identifier, NSView* around) {
    const Ref<NSView> found = viewNamed(identifier, around);
    EXPECT_TRUE(cast<View>(found)) << identifier->utf8();
    return Ref<View>(cast<View>(found));
}

/// Quotes of the instruments ETHUSDT, with a tick of 0.01, and BNBUSDT, with one of 0.1.
class QuotedInstruments {
  public:
    /// As the exchange sends it.
    void quote(const char* symbol, const char* price, const char* more = "") {
        const std::string text =
            std::string(R"({"s":")") + symbol + R"(","c":")" + price + '"' + more + R"(,"E":1627408359982})";
        const std::size_t before = session.quotes();
        session.take({text, text.size(), 1, false}, "quotes", problems);
        EXPECT_EQ(session.quotes(), before + 1) << text;
    }
    replay::Tracker* tracker(std::size_t place) const { return session.trackers().at(place); }

    replay::Console console{true};
    replay::Problems problems{console};
    replay::Session session{instruments(), ""};

  private:
    static std::vector<Ref<replay::Instrument>> instruments() {
        std::vector<Ref<replay::Instrument>> list;
        for (const auto& [symbol, tick] : {std::pair("ETHUSDT"_ns, "0.01"_ns), std::pair("BNBUSDT"_ns, "0.1"_ns)}) {
            list.push_back(make<replay::Instrument>());
            list.back()->setSymbol(symbol);
            list.back()->setTick(NSDecimalNumber::decimalNumberWithString(tick));
        }
        return list;
    }
};

/// What the user has chosen, which is nothing at first and is forgotten in the end.
class UserChoices {
  public:
    UserChoices() { forget(); }
    ~UserChoices() {
        forget();
        NSApplication::sharedApplication()->setAppearance(nullptr);
    }
    UserChoices(const UserChoices&) = delete;
    UserChoices& operator=(const UserChoices&) = delete;

  private:
    static void forget() {
        const auto defaults = NSUserDefaults::standardUserDefaults();
        for (const auto& key : {"columns"_ns, "AppleInterfaceStyle"_ns, desk::highlightKey(desk::Way::Up),
                                desk::highlightKey(desk::Way::Down)}) {
            defaults->removeObjectForKey(key);
        }
        defaults->synchronize();
    }
};

/// The desk on the screen, with a feed that has come to its end: quotes come by hand.
class DeskOnScreen : public testing::Test, protected QuotedInstruments {
  protected:
    void SetUp() override {
        const std::string file = m_folder.filePath("quotes").toStdString();
        std::ofstream(file) << "";
        m_feed.emplace(file, 1, session, problems);
        desk = make<desk::Desk>();
        desk->open(session, *m_feed);
        ASSERT_TRUE(eventually([this] {
            const QWidget* const host = qt::widget(desk->window());
            return host && host->isActiveWindow() && status() == "Everything was played";
        }));
    }
    void TearDown() override {
        const auto application = NSApplication::sharedApplication();
        if (const auto settings = windowWithIdentifier(application, "settings"_ns)) {
            settings->close();
        }
        application->setMainMenu(nullptr);
        UNUserNotificationCenter::currentNotificationCenter()->setDelegate(nullptr);
        if (desk) {
            desk->window()->orderOut(nullptr);
        }
        desk = nullptr;
        settle();
    }

    static void settle() {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    template <class View>
    Ref<View> named(NSString* identifier) const {
        return test::named<View>(identifier, desk->window()->contentView());
    }
    std::string status() const { return named<NSTextField>("status"_ns)->stringValue()->utf8(); }
    std::string messages() const { return named<NSTextView>("messages"_ns)->string()->utf8(); }
    Ref<NSTableView> table() const { return named<NSTableView>("watchList"_ns); }
    QTableView* shownTable() const { return qt::widget(desk->window())->findChild<QTableView*>(); }
    /// What a cell of the table shows.
    std::string shown(NSString* column, int row) const {
        const auto place = table()->columnWithIdentifier(column);
        const QAbstractItemModel* const model = shownTable()->model();
        return model->index(row, int(place)).data().toString().toStdString();
    }
    void select(NSUInteger row) const {
        table()->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(row), false);
    }
    /// Orders 10 of what is selected, in the ticket that is filled in for it.
    void buy(NSString* price) const {
        named<NSTextField>("price"_ns)->setStringValue(price);
        named<NSTextField>("quantity"_ns)->setStringValue("10"_ns);
        named<NSTextField>("account"_ns)->setStringValue("DESK-1"_ns);
        named<NSTextField>("password"_ns)->setStringValue("secret-42"_ns);
        named<NSButton>("buy"_ns)->performClick(nullptr);
    }

    UserChoices choices;
    Ref<desk::Desk> desk;

  private:
    QTemporaryDir m_folder;
    std::optional<replay::Feed> m_feed;
};

} // namespace zr::test
