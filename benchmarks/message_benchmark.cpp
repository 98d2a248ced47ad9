#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/platform/runtime/declare.h>

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

// What a message by name costs, beside a table of functions under string keys, and what counting references costs,
// beside std::shared_ptr.

namespace zr {
namespace {

class Counter : public NSObject {
    ZR_OBJECT(Counter, NSObject)

  public:
    NSInteger add(NSInteger amount) { return m_total += amount; }
    ZR_METHOD(add, "add:")

  private:
    NSInteger m_total = 0;
};

void messageByName(benchmark::State& state) {
    const auto counter = make<Counter>();
    if (send<NSInteger>(counter, "add:"_sel, NSInteger{2}) != 2) {
        state.SkipWithError("the message did not arrive");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(send<NSInteger>(counter, "add:"_sel, NSInteger{1}));
    }
}
BENCHMARK(messageByName);

void functionFromStringTable(benchmark::State& state) {
    NSInteger total = 0;
    std::unordered_map<std::string, std::function<NSInteger(NSInteger)>> table;
    // As many operations as a value class has.
    for (int i = 0; i < 40; ++i) {
        table["operation" + std::to_string(i) + ':'] = [&](NSInteger amount) { return total -= amount; };
    }
    table["add:"] = [&](NSInteger amount) { return total += amount; };
    const std::string name = "add:";
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.find(name)->second(1));
    }
}
BENCHMARK(functionFromStringTable);

void keepAndLetGo(benchmark::State& state) {
    const id object = make<NSObject>();
    for (auto _ : state) {
        id kept = object;
        benchmark::DoNotOptimize(kept);
    }
}
BENCHMARK(keepAndLetGo);

void keepAndLetGoSharedPointer(benchmark::State& state) {
    const auto object = std::make_shared<int>(1);
    for (auto _ : state) {
        std::shared_ptr<int> kept = object;
        benchmark::DoNotOptimize(kept);
    }
}
BENCHMARK(keepAndLetGoSharedPointer);

void readWeak(benchmark::State& state) {
    const id object = make<NSObject>();
    const Weak<NSObject> weak(object);
    for (auto _ : state) {
        benchmark::DoNotOptimize(weak.lock());
    }
}
BENCHMARK(readWeak);

void readWeakPointer(benchmark::State& state) {
    const auto object = std::make_shared<int>(1);
    const std::weak_ptr<int> weak(object);
    for (auto _ : state) {
        benchmark::DoNotOptimize(weak.lock());
    }
}
BENCHMARK(readWeakPointer);

void makeObject(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(make<Counter>());
    }
}
BENCHMARK(makeObject);

void makeSharedPointer(benchmark::State& state) {
    struct Plain {
        virtual ~Plain() = default;
        NSInteger total = 0;
    };
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::make_shared<Plain>());
    }
}
BENCHMARK(makeSharedPointer);

void readAttachment(benchmark::State& state) {
    static const char key = 0;
    const id object = make<NSObject>();
    objc_setAssociatedObject(object, &key, object, OBJC_ASSOCIATION_ASSIGN);
    for (auto _ : state) {
        benchmark::DoNotOptimize(objc_getAssociatedObject(object, &key));
    }
}
BENCHMARK(readAttachment);

void readAttachmentFromMap(benchmark::State& state) {
    const auto object = std::make_shared<int>(1);
    std::unordered_map<const void*, std::shared_ptr<int>> table{{object.get(), object}};
    for (auto _ : state) {
        std::shared_ptr<int> read = table.find(object.get())->second;
        benchmark::DoNotOptimize(read);
    }
}
BENCHMARK(readAttachmentFromMap);

} // namespace
} // namespace zr
