#pragma once

#include <variant>

// Calls `visit` with what the variant holds. Instead of std::visit: in an optimised 32-bit build GCC 12 loses
// the exceptions that are thrown in there, and the program ends.
template <typename Visit, typename... Alternatives>
void VisitVariant(const std::variant<Alternatives...>& value, const Visit& visit) {
    const auto visitIf = [&](const auto* held) {
        if (held != nullptr) visit(*held);
    };
    (visitIf(std::get_if<Alternatives>(&value)), ...);
}
