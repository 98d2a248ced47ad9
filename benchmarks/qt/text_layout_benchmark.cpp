#include <zrbasic/core/text_height.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/qt/session.h>

#include <QFont>
#include <QTextLayout>

#include <benchmark/benchmark.h>
#include <cmath>
#include <string>
#include <vector>

// The heights of 2000 messages of 8 to 120 letters, wrapped to 200 points, as when a list of messages is filled. They
// stand beside Qt's text layout called directly with the texts and the font at hand, so what is between them is the way
// from UTF-16 and the attributes.

namespace {

using namespace zr;

constexpr std::size_t messageCount = 2000;
constexpr double width = 200;
constexpr double padding = 5;
constexpr double spacing = 5;

std::vector<std::string> messages() {
    constexpr std::string_view words = "order filled at best price while the market was moving down ";
    std::vector<std::string> all;
    for (std::size_t i = 0; i < messageCount; ++i) {
        std::string message;
        while (message.size() < 8 + i * 37 % 113)
            message += words[(message.size() + i) % words.size()];
        all.push_back(message);
    }
    return all;
}

double heightByQt(const QString& text, const QFont& font) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    double height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width - 2 * padding);
        height += line.height() + (height > 0 ? spacing : 0);
    }
    layout.endLayout();
    return height;
}

QFont fontOfQt() {
    QFont font;
    font.setPixelSize(13);
    return font;
}

void messageHeights(benchmark::State& state) {
    std::vector<Ref<NSString>> texts;
    for (const std::string& message : messages())
        texts.push_back(NSString::fromUtf8(message));
    const Ref<NSFont> font = NSFont::systemFontOfSize(13);
    double sum = 0;
    for (auto _ : state) {
        sum = 0;
        for (const Ref<NSString>& text : texts)
            sum += calculateHeightWithAbsoluteWidth_font_lineSpacing(text, width, font, spacing);
    }
    double expected = 0;
    for (const Ref<NSString>& text : texts)
        expected += heightByQt(QString::fromStdString(text->utf8()), fontOfQt());
    if (sum != expected)
        state.SkipWithError("other heights than Qt's");
}
BENCHMARK(messageHeights)->Unit(benchmark::kMillisecond);

void messageHeightsByQt(benchmark::State& state) {
    std::vector<QString> texts;
    for (const std::string& message : messages())
        texts.push_back(QString::fromStdString(message));
    const QFont font = fontOfQt();
    for (auto _ : state) {
        double sum = 0;
        for (const QString& text : texts)
            sum += heightByQt(text, font);
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(messageHeightsByQt)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const zr::qt::Session session;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
