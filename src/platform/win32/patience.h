#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <utility>

namespace platform {

// What the work gives, or nothing if it takes longer than so many milliseconds. It runs on a thread that may
// outlive the wait, so it must own all that it uses. By the system's own means: the library's futures lose
// one in thousands here.
template <class Work>
auto Within(DWORD milliseconds, Work work) {
    using Result = std::optional<decltype(work())>;
    struct Task {
        Work Do;
        Result Done{};
    };
    const auto task = std::make_shared<Task>(std::move(work));
    auto owned = std::make_unique<std::shared_ptr<Task>>(task);
    const auto run = [](void* given) -> DWORD {
        const std::unique_ptr<std::shared_ptr<Task>> own(static_cast<std::shared_ptr<Task>*>(given));
        (*own)->Done = (*own)->Do();
        return 0;
    };
    const HANDLE thread = CreateThread(nullptr, 0, run, owned.get(), 0, nullptr);
    if (thread == nullptr) return Result();
    owned.release();
    const bool ended = WaitForSingleObject(thread, milliseconds) == WAIT_OBJECT_0;
    CloseHandle(thread);
    return ended ? std::move(task->Done) : Result();
}

}  // namespace platform
