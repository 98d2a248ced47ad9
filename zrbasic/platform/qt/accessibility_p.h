#pragma once

#include <zrbasic/platform/appkit/peer.h>

#include <QAccessible>
#include <QString>

#include <memory>
#include <vector>

class QWidget;

namespace zr {
class NSView;
} // namespace zr

/// What those are told of a view who cannot see it.
namespace zr::qt {

/// Makes Qt ask us about the widgets of views: what each of them is, is called and says. More than one call does no
/// more.
void installAccessibility();
/// And no longer.
void removeAccessibility();

/// What the view is called: the label that it was given, or what it shows itself; empty when there is neither.
[[nodiscard]] QString accessibleName(NSView& view);

using Announcements = std::vector<std::unique_ptr<QAccessibleEvent>>;

/// What is to be told of a change; `widget` is the view's, and remembers what was told of it.
[[nodiscard]] Announcements announcementsOf(NSView& view, ViewChange change, QWidget& widget);

/// Tells whoever listens what has changed of a view that is on the screen; nothing when nobody does. Called by the
/// view's peer, after the widget follows the change.
void announceChange(NSView& view, ViewChange change);

} // namespace zr::qt
