#pragma once

#include "host.h"
#include "scriptedport.h"
#include "vexotools.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <string>

using Do = hostkit::WindowAction;

/// The library as a host has it loaded, with a user who is scripted.
class WindowTest : public ::testing::Test {
protected:
    WindowTest() { DllMain(instance, 1, nullptr); }
    ~WindowTest() override {
        DllMain(instance, 0, nullptr);
        dlclose(instance);
    }

    hostkit::ScriptedPort port;
    hostkit::Host host{port};
    HINSTANCE instance = static_cast<HINSTANCE>(dlopen("VEXOTools10.so", RTLD_NOW | RTLD_NOLOAD));
};

/// What must hold of every painted window: each text lies within its clip, no two texts share a pixel, and no
/// text lies on an icon.
inline void expectReadable(const hostkit::ShownWindow& window, const std::string& what) {
    using hostkit::PaintedItem;
    using hostkit::PaintKind;
    const auto shown = [](const PaintedItem& item) {
        return std::string(item.text.begin(), item.text.end());
    };
    int texts = 0;
    for (const PaintedItem& item : window.painting.items) {
        if (item.kind != PaintKind::text || item.text.empty()) continue;
        ++texts;
        EXPECT_FALSE(hostkit::isClipped(item)) << what << ": cut off: " << shown(item);
        for (const PaintedItem& other : window.painting.items) {
            if (&other == &item || hostkit::isEmpty(hostkit::common(item.bounds, other.bounds))) continue;
            EXPECT_NE(other.kind, PaintKind::icon) << what << ": on an icon: " << shown(item);
            EXPECT_FALSE(other.kind == PaintKind::text && !other.text.empty())
                << what << ": " << shown(item) << " lies on " << shown(other);
        }
    }
    EXPECT_GT(texts, 0) << what;
}
