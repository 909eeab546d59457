// The component palette: the pages on which components are offered to a form
// designer, and the factory that makes each one. A component's Register() puts
// it on its page; the year-end module only carries its components and
// registers them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "components/TComponent.h"

namespace iras {

// The palette page of the payroll suite's own components.
inline constexpr const char* KovaComponentsPage = "Kova Components";

using ComponentFactory = std::function<std::unique_ptr<TComponent>(TComponent* owner)>;

class ComponentRegistry {
public:
    // Puts className on page. Registering a class again moves it to the page
    // and factory given last; it is listed once.
    static void RegisterComponent(const std::string& page, const std::string& className,
                                  ComponentFactory factory);

    // Pages in the order in which they were first used; classes of a page in
    // the order in which they were registered.
    static std::vector<std::string> Pages();
    static std::vector<std::string> ComponentsOn(const std::string& page);
    static std::string PageOf(const std::string& className);  // "" when not registered

    // A new component of a registered class; nullptr for an unknown class.
    static std::unique_ptr<TComponent> Create(const std::string& className, TComponent* owner = nullptr);
};

}  // namespace iras
