#include "desk.h"

#include "column_layout.h"
#include "message_text.h"
#include "price_text.h"
#include "table.h"

#include <zrbasic/core/url_text.h>
#include <zrbasic/model/table_column_layout.h>
#include <zrbasic/platform/appkit/table_column.h>
#include <zrbasic/platform/appkit/user_notification.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/null.h>

namespace replay {

using namespace zr;

namespace {

constexpr auto left = Table::Side::Left;
constexpr auto right = Table::Side::Right;

id orNull(id object) {
    return object ? object : id(NSNull::null());
}

std::string messageSection(const Desk& desk, bool isColoured) {
    Table links({left, left});
    for (const MessageLink& link : linksOf(desk.message)) {
        links.add({link.text, link.target});
    }
    const std::string list = links.text(2);
    return "Message from the account server\n\n" + messageText(desk.message, 2, isColoured) + '\n' +
           (list.empty() ? "" : list + '\n');
}

std::string columnSection(NSTableView* table) {
    Table columns({left, right, left});
    columns.add({"COLUMN", "WIDTH", ""});
    const auto arranged = table->tableColumns();
    for (const id& element : arranged->elements()) {
        auto* const column = cast<NSTableColumn>(element);
        columns.add({column->title()->utf8(), textOf(box(column->width())), column->isHidden() ? "hidden" : ""});
    }
    return "Columns as the user left them\n\n" + columns.text(2) + '\n';
}

/// An address holds its parameters with escapes.
std::string decoded(NSObject* text) {
    const auto plain = urlDecode(cast<NSString>(text));
    return plain ? plain->utf8() : "";
}

void addParameters(Table& table, const std::string& place, NSDictionary* parameters) {
    const auto names = parameters->allKeys();
    for (const id& name : names->elements()) {
        table.add({place, decoded(name), decoded(parameters->peek(name))});
    }
}

std::string orderSection(const OrderLink& order) {
    Table parameters({left, left, left});
    addParameters(parameters, "query", order.query);
    addParameters(parameters, "fragment", order.fragment);
    return "Order as an address, built and refreshed\n\n  " + order.built->absoluteString()->utf8() + "\n  " +
           order.refreshed->absoluteString()->utf8() + "\n\n" + parameters.text(2) + '\n';
}

std::string responseText(const ZRUserNotificationInfo& response) {
    const auto order = response.userInfo()->objectForKey("order"_ns);
    return std::string(response.activationType() == NSUserNotificationActivationTypeActionButtonClicked
                           ? "the button was clicked"
                           : "the notification was clicked") +
           ", for order " + order->description()->utf8();
}

std::string fillSection(const FillNotice& fill) {
    Table lines({left, left});
    lines.add({"title", fill.title});
    lines.add({"text", fill.text});
    lines.add({"button", fill.button});
    lines.add({"response", responseText(*fill.response)});
    return "Notification of a fill\n\n" + lines.text(2) + '\n';
}

id messageObject(NSAttributedString* message) {
    if (!message) {
        return nullptr;
    }
    const auto links = NSMutableArray::array();
    for (const MessageLink& link : linksOf(message)) {
        links->addObject(
            dictionary({{"text"_ns, NSString::fromUtf8(link.text)}, {"target"_ns, NSString::fromUtf8(link.target)}}));
    }
    return dictionary({{"text"_ns, message->string()}, {"links"_ns, links}});
}

id orderObject(const OrderLink& order) {
    return dictionary({{"built"_ns, order.built->absoluteString()},
                       {"refreshed"_ns, order.refreshed->absoluteString()},
                       {"query"_ns, order.query},
                       {"fragment"_ns, order.fragment}});
}

id fillObject(const FillNotice& fill) {
    return dictionary({{"title"_ns, NSString::fromUtf8(fill.title)},
                       {"text"_ns, NSString::fromUtf8(fill.text)},
                       {"button"_ns, NSString::fromUtf8(fill.button)},
                       {"activation"_ns, box(fill.response->activationType())},
                       {"order"_ns, fill.response->userInfo()->objectForKey("order"_ns)}});
}

} // namespace

Desk openDesk(Account* account, const std::optional<PriceEntry>& entry) {
    Desk desk;
    if (account) {
        desk.message = styledMessage(account->message());
        desk.table = instrumentTable(account->columns());
    }
    if (entry) {
        desk.order = linkOrder(*entry);
        desk.fill = notifyOfFill(*entry);
    }
    return desk;
}

std::string deskText(const Desk& desk, bool isColoured) {
    std::string text;
    if (desk.message) {
        text += messageSection(desk, isColoured);
    }
    if (desk.table) {
        text += columnSection(desk.table);
    }
    if (desk.order) {
        text += orderSection(*desk.order);
    }
    if (desk.fill) {
        text += fillSection(*desk.fill);
    }
    return text;
}

Ref<NSDictionary> deskObject(const Desk& desk) {
    return dictionary({{"message"_ns, orNull(messageObject(desk.message))},
                       {"columns"_ns, orNull(arrangedColumnInfos(desk.table))},
                       {"order"_ns, orNull(desk.order ? orderObject(*desk.order) : id())},
                       {"fill"_ns, orNull(desk.fill ? fillObject(*desk.fill) : id())}});
}

} // namespace replay
