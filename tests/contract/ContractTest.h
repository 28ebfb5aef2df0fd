#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/Home.h"
#include "platform/Platform.h"

// A test of what the ports promise. The same code runs over the fakes and over Windows.
class ContractTest : public testing::Test {
 protected:
    // A block of the program with these bytes.
    DataHandle MakeBlock(const std::string& bytes) {
        const DataHandle block = memory.Allocate(bytes.size());
        if (void* address = memory.Lock(block)) {
            bytes.copy(static_cast<char*>(address), bytes.size());
            memory.Unlock(block);
        }
        return block;
    }

    std::string BytesOf(DataHandle block) {
        const std::size_t size = memory.Size(block);
        const void* address = memory.Lock(block);
        if (address == nullptr) return {};
        std::string bytes(static_cast<const char*>(address), size);
        memory.Unlock(block);
        return bytes;
    }

    WindowHandle MakeWindow() {
        return home->MakeWindow(L"Fenster", [](auto...) { return MessageParameter{0}; });
    }

    std::unique_ptr<Home> home = Home::Make();
    ClipboardPort& clipboard = home->Ports().clipboard;
    MemoryPort& memory = home->Ports().memory;
    MetafilePort& metafiles = home->Ports().metafiles;
    FilePort& files = home->Ports().files;
    SettingsPort& settings = home->Ports().settings;
    WindowPort& windows = home->Ports().windows;
    ClockPort& clock = home->Ports().clock;
};
