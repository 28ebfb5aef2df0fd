#include <cxxabi.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>

#include "desktop/doors/DoorTable.h"
#include "platform/Guard.h"

namespace {

// The process has it to its end.
DoorTable& Table() {
    static auto* const table = static_cast<DoorTable*>(
        MapViewOfFile(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(DoorTable),
                                         DoorTableName(GetCurrentProcessId()).c_str()),
                      FILE_MAP_ALL_ACCESS, 0, 0, 0));
    return *table;
}

DoorTable* tableOfDoors = nullptr;
thread_local int inside = 0;

// A lambda's type bears the name of the function it stands in.
std::string FunctionAround(const std::type_info& lambda) {
    std::string name = abi::__cxa_demangle(lambda.name(), nullptr, nullptr, nullptr);
    constexpr std::string_view kNameless = "(anonymous namespace)::";
    if (name.starts_with(kNameless)) name.erase(0, kNameless.size());
    return name.substr(0, name.find('('));
}

}  // namespace

Door::Door(const std::type_info& function) : number_(Table().count++) {
    if (Table().count > static_cast<LONG>(std::size(Table().doors))) std::abort();
    std::strncpy(Table().doors[number_].name, FunctionAround(function).c_str(), sizeof DoorState::name - 1);
}

Door::Inside::Inside() {
    ++inside;
}

Door::Inside::~Inside() {
    --inside;
}

Door::Inside Door::Pass() const {
    tableOfDoors = &Table();
    DoorState& door = Table().doors[number_];
    if (InterlockedExchange(&door.armed, 0) == 0) return {};
    InterlockedIncrement(&door.thrown);
    throw std::runtime_error(door.name);
}

void* operator new(std::size_t size) {
    const bool fails = inside > 0 && InterlockedExchange(&tableOfDoors->memoryFails, 0) != 0;
    void* const memory = fails ? nullptr : std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
