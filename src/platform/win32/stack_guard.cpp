// The number that guards the stack, what happens when it was written over, and when a checked copy would go
// too far. The compiler's own library, in which all three are one piece, would load the system's old
// cryptography for it at every start.

#define _CRT_RAND_S  // NOLINT(bugprone-reserved-identifier): brings rand_s

#include <cstdint>
#include <cstdlib>

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl*): the compiler knows them by these names.
std::uintptr_t __stack_chk_guard = 0;

[[noreturn]] void __stack_chk_fail() { __builtin_trap(); }
[[noreturn]] void __chk_fail() { __builtin_trap(); }
// NOLINTEND(bugprone-reserved-identifier,cert-dcl*)
}

namespace {

__attribute__((constructor, no_stack_protector)) void MakeGuard() {
    unsigned int high = 0, low = 0;
    rand_s(&high);
    rand_s(&low);
    // A byte of 0 ends what a text function copies.
    __stack_chk_guard = (static_cast<std::uintptr_t>(high) << 32 | low) & ~std::uintptr_t{0xFF};
}

}  // namespace
