#include "view_testing.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>

#include <random>
#include <thread>

namespace zr::test {
namespace {

class ViewLifetimes : public ViewWindow {};

/// Whose end is counted.
class CountedView : public LoggingView {
    ZR_OBJECT(CountedView, LoggingView)
  public:
    CountedView() { ++living; }
    ~CountedView() override { --living; }

    static inline int living = 0;
};

Ref<CountedView> countedView() {
    auto view = make<CountedView>(&CountedView::initWithFrame, NSRect{{0, 0}, {50, 50}});
    return view;
}

/// Views and widgets in each other, taken apart in any order.
class RandomTree {
  public:
    explicit RandomTree(unsigned seed) : m_random(seed) {}

    void run() {
        m_top = std::make_unique<QWidget>();
        m_layout = new QHBoxLayout(m_top.get());
        if (below(2)) {
            m_top->show();
        }
        for (int step = 0; step < 40; ++step) {
            grow();
        }
        while (!m_views.empty() || m_top) {
            shrink();
        }
    }

  private:
    unsigned below(unsigned limit) { return unsigned(m_random()) % limit; }
    Ref<CountedView> anyView() { return m_views.empty() ? nullptr : m_views[below(unsigned(m_views.size()))]; }
    QWidget* anyWidget() {
        if (!m_top) {
            return nullptr;
        }
        const auto widgets = m_top->findChildren<QWidget*>();
        return widgets.isEmpty() ? m_top.get() : widgets[int(below(unsigned(widgets.size())))];
    }

    void grow() {
        const Ref<CountedView> view = anyView();
        switch (below(8)) {
            case 0:
            case 1:
                m_views.push_back(countedView());
                break;
            case 2:
                if (view && !view->superview()) {
                    m_layout->addWidget(qt::widget(view.get()));
                }
                break;
            case 3: {
                const Ref<CountedView> other = anyView();
                if (view && !other->isDescendantOf(view)) {
                    other->addSubview(view);
                }
                break;
            }
            case 4:
                if (QWidget* const widget = anyWidget()) {
                    (new QPushButton(widget))->show();
                }
                break;
            case 5: {
                QWidget* const widget = anyWidget();
                QWidget* const own = view && !view->superview() ? qt::widget(view.get()) : nullptr;
                if (widget && own && widget != own && !own->isAncestorOf(widget)) {
                    own->setParent(widget);
                    own->show();
                }
                break;
            }
            case 6:
                if (view) {
                    view->removeFromSuperview();
                }
                break;
            default:
                if (view) {
                    view->setHidden(!view->isHidden());
                }
                break;
        }
    }

    void shrink() {
        const unsigned action = below(7);
        switch (action) {
            case 0:
            case 1:
                if (!m_views.empty()) {
                    m_views.erase(m_views.begin() + below(unsigned(m_views.size())));
                }
                break;
            case 2:
                if (QWidget* const widget = anyWidget(); widget && widget != m_top.get()) {
                    delete widget;
                }
                break;
            case 3:
                if (QWidget* const widget = anyWidget(); widget && widget != m_top.get()) {
                    widget->deleteLater();
                }
                break;
            case 4:
                grow();
                break;
            case 5:
                QCoreApplication::processEvents();
                break;
            default:
                if (below(10) == 0) {
                    m_top.reset();
                    m_layout = new QHBoxLayout(&m_spare);
                    m_views.clear();
                }
                break;
        }
    }

    std::mt19937 m_random;
    std::unique_ptr<QWidget> m_top;
    QWidget m_spare;
    QHBoxLayout* m_layout = nullptr;
    std::vector<Ref<CountedView>> m_views;
};

TEST_F(ViewLifetimes, anyTreeOfViewsAndWidgetsComesApartInAnyOrder) {
    const int before = CountedView::living;
    const auto widgetsBefore = QApplication::allWidgets().size();
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomTree(seed).run();
        settle();
        EXPECT_EQ(CountedView::living, before);
        EXPECT_EQ(QApplication::allWidgets().size(), widgetsBefore);
        if (HasFailure()) {
            return;
        }
    }
}

TEST_F(ViewLifetimes, aViewOutlivesTheWidgetsAroundIt) {
    const Ref<CountedView> view = countedView();
    const Ref<CountedView> inner = countedView();
    view->addSubview(inner);
    auto top = std::make_unique<QWidget>();
    (new QHBoxLayout(top.get()))->addWidget(qt::widget(view.get()));
    top->show();
    settle();
    top.reset();
    EXPECT_EQ(widgetOf(view), nullptr);
    EXPECT_EQ(widgetOf(inner), nullptr);
    EXPECT_EQ(inner->superview(), view);
    ASSERT_NE(qt::widget(view.get()), nullptr);
    EXPECT_NE(widgetOf(inner), nullptr);
}

TEST_F(ViewLifetimes, whatDeletesItsOldContentDoesNotHurtTheView) {
    QScrollArea area;
    const Ref<CountedView> view = countedView();
    area.setWidget(qt::widget(view.get()));
    area.setWidget(new QWidget);
    EXPECT_EQ(widgetOf(view), nullptr);
    area.setWidget(qt::widget(view.get()));
    EXPECT_EQ(widgetOf(view), area.widget());
}

TEST_F(ViewLifetimes, theWidgetGoesWithTheView) {
    const int before = CountedView::living;
    QWidget top;
    auto* const layout = new QHBoxLayout(&top);
    Ref<CountedView> view = countedView();
    const Ref<CountedView> inner = countedView();
    view->addSubview(inner);
    QPointer<QWidget> widget = qt::widget(view.get());
    layout->addWidget(widget);
    top.show();
    settle();
    view = nullptr;
    EXPECT_EQ(CountedView::living, before + 1);
    settle();
    EXPECT_EQ(widget, nullptr);
    EXPECT_EQ(layout->count(), 0);
    EXPECT_EQ(inner->superview(), nullptr);
    EXPECT_NE(widgetOf(inner), nullptr);
}

TEST_F(ViewLifetimes, aViewMayBeLetGoOfByItsOwnEvent) {
    show();
    const int before = CountedView::living;
    Ref<CountedView> view = countedView();
    content->addSubview(view);
    const QPointer<QWidget> widget = widgetOf(view);
    bool stoodMeanwhile = false;
    view->onEvent = [&] {
        view->removeFromSuperview();
        view = nullptr;
        settle();
        stoodMeanwhile = CountedView::living == before + 1;
    };
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(10, 10));
    EXPECT_TRUE(stoodMeanwhile);
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(CountedView::living, before);
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(10, 10));
    settle();
    EXPECT_EQ(widget, nullptr);
}

TEST_F(ViewLifetimes, anEventMayTakeAwayTheViewAroundAndRunALoop) {
    show();
    Ref<CountedView> outer = countedView();
    const Ref<CountedView> inner = countedView();
    outer->addSubview(inner);
    content->addSubview(outer);
    const QPointer<QWidget> widget = widgetOf(inner);
    inner->onEvent = [&] {
        outer->removeFromSuperview();
        outer = nullptr;
        inner->onEvent = nullptr;
        settle();
    };
    click(10, 10);
    settle();
    EXPECT_EQ(inner->superview(), nullptr);
    EXPECT_EQ(widgetOf(inner), widget.data());
}

TEST_F(ViewLifetimes, aWidgetDeletedOutsideOfAnEventStaysWhileTheEventRunsALoop) {
    show();
    const Ref<CountedView> view = countedView();
    content->addSubview(view);
    const QPointer<QWidget> widget = widgetOf(view);
    widget->deleteLater();
    bool stoodMeanwhile = false;
    view->onEvent = [&] {
        view->onEvent = nullptr;
        QEventLoop loop;
        QTimer::singleShot(10, &loop, &QEventLoop::quit);
        loop.exec();
        stoodMeanwhile = widget != nullptr;
    };
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), Qt::LeftButton,
                      Qt::LeftButton, {});
    QCoreApplication::sendEvent(widget, &press);
    EXPECT_EQ(view->take(), "in down ");
    EXPECT_TRUE(stoodMeanwhile);
    settle();
    EXPECT_EQ(widget, nullptr);
    EXPECT_NE(widgetOf(view), nullptr);
}

TEST_F(ViewLifetimes, theLastReferenceMayBeLetGoOnAnotherThread) {
    const int before = CountedView::living;
    for (int round = 0; round < 20; ++round) {
        QWidget top;
        Ref<CountedView> view = countedView();
        const Ref<CountedView> inner = countedView();
        view->addSubview(inner);
        const QPointer<QWidget> widget = qt::widget(view.get());
        const QPointer<QWidget> innerWidget = widgetOf(inner);
        (new QHBoxLayout(&top))->addWidget(widget);
        top.show();
        std::thread([moved = std::move(view)]() mutable { moved = nullptr; }).join();
        EXPECT_EQ(CountedView::living, before + 1);
        EXPECT_NE(widget, nullptr);
        // It is nobody's any more.
        EXPECT_EQ(qt::viewOf(widget), nullptr);
        settle();
        EXPECT_EQ(widget, nullptr);
        EXPECT_EQ(innerWidget.data(), widgetOf(inner));
        EXPECT_NE(innerWidget, nullptr);
    }
}

TEST_F(ViewLifetimes, aWindowMayBeLetGoOfOnAnotherThread) {
    auto other = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {50, 50}},
                                NSUInteger(NSWindowStyleMaskTitled));
    const Ref<CountedView> view = countedView();
    other->setContentView(view);
    other->orderFront(nullptr);
    settle();
    const QPointer<QWidget> host = qt::widget(other.get());
    ASSERT_NE(host, nullptr);
    other->orderOut(nullptr);
    settle();
    std::thread([moved = std::move(other)]() mutable { moved = nullptr; }).join();
    settle();
    EXPECT_EQ(host, nullptr);
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_NE(widgetOf(view), nullptr);
}

TEST_F(ViewLifetimes, aWindowMayGoInItsOwnEvent) {
    auto other = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {50, 50}},
                                NSUInteger(NSWindowStyleMaskTitled));
    const int before = CountedView::living;
    auto view = countedView();
    view->onEvent = [&other] {
        other->orderOut(nullptr);
        other = nullptr;
    };
    other->setContentView(view);
    view = nullptr;
    other->makeKeyAndOrderFront(nullptr);
    ASSERT_TRUE(eventually([&] { return qt::widget(other.get())->isActiveWindow(); }));
    const QPointer<QWidget> host = qt::widget(other.get());
    QTest::mousePress(host->windowHandle(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(CountedView::living, before);
    settle();
    EXPECT_EQ(host, nullptr);
}

TEST_F(ViewLifetimes, aButtonInAViewMayTakeTheWholeWindowAway) {
    auto other = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {90, 90}},
                                NSUInteger(NSWindowStyleMaskTitled));
    other->orderFront(nullptr);
    auto* const button = new QPushButton(widgetOf(other->contentView()));
    button->setGeometry(0, 0, 90, 90);
    button->show();
    QObject::connect(button, &QPushButton::clicked, button, [&other] {
        other->orderOut(nullptr);
        other = nullptr;
    });
    settle();
    const QPointer<QWidget> guard(button);
    QTest::mouseClick(qt::widget(other.get())->windowHandle(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(other, nullptr);
    settle();
    EXPECT_EQ(guard, nullptr);
}

} // namespace
} // namespace zr::test
