#pragma once

#include <zrbasic/platform/appkit/color_panel.h>

namespace zr {

class NSNotification;

/// Hands the colour that is chosen in the shared colour panel on to one target, which it does not keep.
///
/// There is one panel, so there is one target at a time: the last one that asked. A change reaches it on two ways, by
/// the panel's action and by its notification, and it is told on each of them: of one change twice, once the panel was
/// presented by this bridge. Main thread only.
class ZR_EXPORT _ZRColorPanelBridge : public NSObject {
    ZR_DECLARE_CLASS(_ZRColorPanelBridge, NSObject)
  public:
    ~_ZRColorPanelBridge() override;

    /// Made when it is first asked for, the same from then on, and told of every colour panel's changes. Never null.
    [[nodiscard]] static Ref<_ZRColorPanelBridge> shared();

    /// Not kept; null at first and when it is gone.
    [[nodiscard]] id target() const { return m_target.get(); }
    void setTarget(NSObject* target) { m_target.set(target); }
    /// Takes the colour as its argument; empty at first.
    [[nodiscard]] SEL action() const { return m_action; }
    void setAction(SEL action) { m_action = action; }

    /// Hands on the shared panel's colour, whichever panel the notification is about.
    void colorChangedNotification(NSNotification* notification);
    /// Sends the target the action with the colour of `panel`, which is null for a null panel. Nothing happens when
    /// there is no target or no action, and when the target does not have it.
    void colorChangedAction(NSColorPanel* panel);

    /// In the place of those before; both may be null, and nobody is told then.
    void updateTarget_action(NSObject* target, SEL action);
    /// The same, and has the shared panel tell of every colour while the user drags. Returns the panel, which it does
    /// not show: the caller does, by `orderFront`.
    Ref<NSColorPanel> presentColorPanelWithTarget_action(NSObject* target, SEL action);

  private:
    [[nodiscard]] bool canDeliver();

    detail::Slot<Weak<NSObject>> m_target;
    SEL m_action;
};

// NSColorPanel(ZRHelper)

/// Has the shared colour panel send `action`, with each new colour, to `target`, as `presentColorPanelWithTarget_action`
/// does, and returns the panel. Never null.
ZR_EXPORT Ref<NSColorPanel> panelWithTarget_action(NSObject* target, SEL action);
/// Who is told of the shared panel's colours now, whichever panel is asked; null for nobody and for a null receiver.
[[nodiscard]] ZR_EXPORT id weakTarget(NSColorPanel* self);
/// Always false, for every colour panel of the process, by message and by the member of that name as well: choosing a
/// colour leaves the keyboard with the window that is being edited.
[[nodiscard]] ZR_EXPORT bool canBecomeKeyWindow(NSColorPanel* self);

} // namespace zr
