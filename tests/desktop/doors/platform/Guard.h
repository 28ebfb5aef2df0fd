#pragma once

#include <type_traits>
#include <typeinfo>

// Stands in front of the program's own header: the same guard, and each place that calls it is a door, known
// before the program runs, since each gives it a function of a type of its own.
#define Guarded GuardedAsBuilt
#include_next "platform/Guard.h"
#undef Guarded

class Door {
 public:
    explicit Door(const std::type_info& function);
    // Throws when the test has armed it. What it gives lives as long as the way through it.
    class Inside {
     public:
        Inside();
        ~Inside();
    };
    Inside Pass() const;

 private:
    long number_;
};

template <typename Function>
inline const Door theDoor{typeid(Function)};

template <typename Result, typename Function>
Result Guarded(Result fallback, Function&& function) noexcept {
    return GuardedAsBuilt(std::move(fallback), [&]() -> Result {
        const Door::Inside inside = theDoor<std::remove_cvref_t<Function>>.Pass();
        return function();
    });
}

template <typename Function>
void Guarded(Function&& function) noexcept {
    GuardedAsBuilt([&] {
        const Door::Inside inside = theDoor<std::remove_cvref_t<Function>>.Pass();
        function();
    });
}
