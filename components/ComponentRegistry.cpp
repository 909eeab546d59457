// The palette is one list per process, kept behind a lock so that modules
// registering at load time from any thread see one palette.

#include "components/ComponentRegistry.h"

#include <algorithm>
#include <mutex>

namespace iras {
namespace {

struct Entry {
    std::string page;
    std::string className;
    ComponentFactory factory;
};

struct Palette {
    std::mutex mutex;
    std::vector<Entry> entries;  // in order of registration
};

Palette& ThePalette() {
    static Palette palette;
    return palette;
}

}  // namespace

void ComponentRegistry::RegisterComponent(const std::string& page, const std::string& className,
                                          ComponentFactory factory) {
    Palette& palette = ThePalette();
    std::lock_guard lock(palette.mutex);
    const auto found = std::find_if(palette.entries.begin(), palette.entries.end(),
                                    [&](const Entry& entry) { return entry.className == className; });
    if (found != palette.entries.end()) {
        found->page = page;
        found->factory = std::move(factory);
        return;
    }
    palette.entries.push_back(Entry{page, className, std::move(factory)});
}

std::vector<std::string> ComponentRegistry::Pages() {
    Palette& palette = ThePalette();
    std::lock_guard lock(palette.mutex);
    std::vector<std::string> pages;
    for (const Entry& entry : palette.entries) {
        if (std::find(pages.begin(), pages.end(), entry.page) == pages.end()) pages.push_back(entry.page);
    }
    return pages;
}

std::vector<std::string> ComponentRegistry::ComponentsOn(const std::string& page) {
    Palette& palette = ThePalette();
    std::lock_guard lock(palette.mutex);
    std::vector<std::string> classes;
    for (const Entry& entry : palette.entries) {
        if (entry.page == page) classes.push_back(entry.className);
    }
    return classes;
}

std::string ComponentRegistry::PageOf(const std::string& className) {
    Palette& palette = ThePalette();
    std::lock_guard lock(palette.mutex);
    for (const Entry& entry : palette.entries) {
        if (entry.className == className) return entry.page;
    }
    return "";
}

std::unique_ptr<TComponent> ComponentRegistry::Create(const std::string& className, TComponent* owner) {
    ComponentFactory factory;
    {
        Palette& palette = ThePalette();
        std::lock_guard lock(palette.mutex);
        for (const Entry& entry : palette.entries) {
            if (entry.className == className) factory = entry.factory;
        }
    }
    // Made outside the lock: a component's constructor may register others.
    return factory ? factory(owner) : nullptr;
}

}  // namespace iras
