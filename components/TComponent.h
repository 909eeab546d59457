// A component: a non-visual part that a form of the payroll suite carries, such
// as the SQL script runner. It knows the component that owns it (the form it
// was dropped on), so that a designer can show the tree; its lifetime is its
// holder's, as for any C++ object.
#pragma once

namespace iras {

class TComponent {
public:
    explicit TComponent(TComponent* owner) : owner_(owner) {}
    virtual ~TComponent() = default;
    TComponent(const TComponent&) = delete;
    TComponent& operator=(const TComponent&) = delete;

    TComponent* Owner() const { return owner_; }

private:
    TComponent* owner_;
};

}  // namespace iras
