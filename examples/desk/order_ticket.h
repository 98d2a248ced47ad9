#pragma once

#include <examples/replay/tracker.h>

#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/foundation/notification.h>
#include <zrbasic/ui/plain_view.h>
#include <zrbasic/ui/text_field.h>

namespace desk {

struct Order {
    zr::Ref<zr::NSString> symbol;
    zr::Ref<zr::NSString> price;
    /// All of it, as "Buy 10 ETHUSDT at 2257.26".
    zr::Ref<zr::NSString> text;
};

/// Where orders are typed. A price is rounded to the instrument's tick when its editing ends.
class OrderTicket : public zr::ZRXView {
    ZR_OBJECT(OrderTicket, zr::ZRXView)
  public:
    zr::id initWithFrame(zr::NSRect frame) override;
    /// Orders are for this instrument from now on; null for none.
    void setTracker(replay::Tracker* tracker);
    /// To the next tick above or below.
    void nudge(bool isUp);
    /// Orders, if everything is valid; `side` is "Buy" or "Sell".
    void place(zr::NSString* side);

    std::function<void(const Order&)> onOrder;
    /// Called with what is wrong.
    std::function<void(zr::NSString*)> onRefusal;

    void textDidChange(zr::NSNotification* notification);
    ZR_METHOD(textDidChange, "controlTextDidChange:")
    void editingDidEnd(zr::NSNotification* notification);
    ZR_METHOD(editingDidEnd, "controlTextDidEndEditing:")
    void viewDidChangeEffectiveAppearance() override;
    ZR_METHOD(viewDidChangeEffectiveAppearance, "viewDidChangeEffectiveAppearance")

  private:
    template <class Field>
    zr::Ref<Field> addField(zr::NSString* name, zr::NSString* identifier, zr::NSFormatter* formatter, double y);
    /// Why the field's text cannot stand; null when it can.
    [[nodiscard]] zr::Ref<zr::NSString> fault(zr::NSTextField* field) const;
    [[nodiscard]] zr::Ref<zr::NSDecimalNumber> price() const;
    void roundPrice();
    void show(zr::NSNumber* price);

    zr::Ref<replay::Tracker> m_tracker;
    zr::Ref<zr::NSTextField> m_title;
    zr::Ref<zr::ZRXTextField> m_price;
    zr::Ref<zr::ZRXTextField> m_quantity;
    zr::Ref<zr::ZRXTextField> m_account;
    zr::Ref<zr::ZRXSecureTextField> m_password;
    zr::Ref<zr::NSPopUpButton> m_rounding;
};

} // namespace desk
