#include "desktop_testing.h"

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/ui/view.h>

#include <QProcess>

namespace zr {
namespace {

using test::becomes;
using Pixel = NSBitmapImageRep::Pixel;

constexpr Pixel red{255, 0, 0, 255};
constexpr Pixel green{0, 255, 0, 255};
constexpr Pixel blue{0, 0, 255, 255};
constexpr Pixel nothing{};

class ColoredView : public NSView {
    ZR_OBJECT(ColoredView, NSView)
  public:
    void drawRect(NSRect) override {
        setFill(color);
        NSRectFill(bounds());
    }
    Ref<NSColor> color;
};

Ref<ColoredView> colored(NSRect frame, NSColor* color) {
    auto view = make<ColoredView>(&NSView::initWithFrame, frame);
    view->color = Ref<NSColor>(color);
    return view;
}

/// A blue window of another program, in front of everything, at that place of the server's.
class ForeignWindow {
  public:
    explicit ForeignWindow(const QStringList& place) {
        static const char* const program =
            "import ctypes, sys\n"
            "x = ctypes.CDLL('libX11.so.6')\n"
            "x.XOpenDisplay.restype = ctypes.c_void_p\n"
            "x.XDefaultRootWindow.restype = ctypes.c_ulong\n"
            "x.XCreateWindow.restype = ctypes.c_ulong\n"
            "class Attributes(ctypes.Structure):\n"
            "    _fields_ = [('pixmap', ctypes.c_ulong), ('pixel', ctypes.c_ulong), ('border', ctypes.c_ulong),\n"
            "        ('border_pixel', ctypes.c_ulong), ('bit', ctypes.c_int), ('win', ctypes.c_int),\n"
            "        ('store', ctypes.c_int), ('planes', ctypes.c_ulong), ('backing', ctypes.c_ulong),\n"
            "        ('under', ctypes.c_int), ('events', ctypes.c_long), ('dont', ctypes.c_long),\n"
            "        ('override', ctypes.c_int), ('colormap', ctypes.c_ulong), ('cursor', ctypes.c_ulong)]\n"
            "server = ctypes.c_void_p(x.XOpenDisplay(None))\n"
            "given = Attributes(pixel=0x0000ff, override=1)\n"
            "root = ctypes.c_ulong(x.XDefaultRootWindow(server))\n"
            "window = ctypes.c_ulong(x.XCreateWindow(server, root, *map(int, sys.argv[1:5]), 0, 0, 0, None,\n"
            "    ctypes.c_ulong(2 | 512), ctypes.byref(given)))\n"
            "x.XMapRaised(server, window)\n"
            "x.XSync(server, 0)\n"
            "print('shown', flush=True)\n"
            "sys.stdin.read()\n";
        m_process.start("python3", QStringList{"-c", program} + place);
        becomes([this] { return m_process.canReadLine(); });
        EXPECT_EQ(m_process.readLine().trimmed(), "shown") << m_process.readAllStandardError().toStdString();
    }
    ~ForeignWindow() {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

  private:
    QProcess m_process;
};

class ViewCaptures : public test::Desktop {
  protected:
    void SetUp() override {
        window = showWindow(NSMakeRect(200, 150, 400, 300), "Captured"_ns);
        window->contentView()->addSubview(colored({{0, 0}, {400, 300}}, NSColor::greenColor()));
        view = colored({{100, 100}, {80, 40}}, NSColor::redColor());
        window->contentView()->addSubview(view);
        EXPECT_TRUE(becomes([this] { return pixel(1, 1) == red; }));
    }
    Pixel pixel(NSInteger x, NSInteger y) const {
        const auto bitmap = screenCachedImage(view)->bestRepresentation();
        return bitmap ? bitmap->pixelAtX_y(x, y) : Pixel{1, 2, 3, 4};
    }

    Ref<NSWindow> window;
    Ref<ColoredView> view;
};

TEST_F(ViewCaptures, showTheViewAsItIsOnTheScreen) {
    const auto image = screenCachedImage(view);
    EXPECT_EQ(image->size(), NSMakeSize(80, 40));
    EXPECT_EQ(pixel(0, 0), red);
    EXPECT_EQ(pixel(79, 39), red);
    view->color = NSColor::blueColor();
    view->setNeedsDisplay(true);
    EXPECT_EQ(pixel(40, 20), blue) << "drawn again before";
}

TEST_F(ViewCaptures, showWindowsOfOtherProgramsInFront) {
    const NSRect place = convertRectToScreen(view);
    const double top = NSScreen::mainScreen()->frame().size.height - NSMaxY(place);
    const ForeignWindow other({QString::number(qRound(place.origin.x)), QString::number(qRound(top)), "20", "200"});
    EXPECT_TRUE(becomes([this] { return pixel(1, 1) == blue; }));
    EXPECT_EQ(pixel(19, 39), blue);
    EXPECT_EQ(pixel(20, 39), red);
}

TEST_F(ViewCaptures, leaveOutWhatLiesBehindTheWindow) {
    const auto behind = showWindow(NSMakeRect(150, 50, 500, 450), "Behind"_ns);
    behind->contentView()->addSubview(colored({{0, 0}, {500, 450}}, NSColor::blueColor()));
    EXPECT_TRUE(becomes([this] { return pixel(1, 1) == blue; })) << "in front at first";
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(becomes([this] { return pixel(1, 1) == red; }));
    setZr_borderWidth(view, 20);
    view->layer()->setBorderColor(NSColor::redColor());
    EXPECT_EQ(pixel(40, 45), green) << "of the window, below the view";
    view->setFrame({{100, 0}, {80, 40}});
    EXPECT_EQ(screenCachedImage(view)->size(), NSMakeSize(80, 80));
    EXPECT_EQ(pixel(40, 20), red);
    EXPECT_EQ(pixel(40, 78), nothing) << "below the window, where the other one shows";
}

TEST_F(ViewCaptures, areTransparentBeyondTheScreen) {
    const auto edge = showWindow(NSMakeRect(100, -100, 300, 200), "Edge"_ns);
    const auto low = colored({{0, 0}, {300, 200}}, NSColor::redColor());
    edge->contentView()->addSubview(low);
    const auto at = [&low](NSInteger y) {
        const auto bitmap = screenCachedImage(low)->bestRepresentation();
        return bitmap ? bitmap->pixelAtX_y(150, y) : Pixel{1, 2, 3, 4};
    };
    ASSERT_TRUE(becomes([&] {
        edge->setFrameOrigin({100, -100});
        QTest::qWait(50);
        return convertRectToScreen(low).origin.y < -50 && at(1) == red;
    })) << convertRectToScreen(low).origin.y;
    EXPECT_EQ(screenCachedImage(low)->size(), NSMakeSize(300, 200));
    const auto seen = static_cast<NSInteger>(NSMaxY(convertRectToScreen(low)));
    EXPECT_EQ(at(seen - 1), red);
    EXPECT_EQ(at(seen + 1), nothing) << "below the screen";
    EXPECT_EQ(at(199), nothing);
}

} // namespace
} // namespace zr
