#pragma once

#include "engine/process/modHelp.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "fake/FakePlatformTest.h"

// A fake machine with the program installed in C:\NXCLIP\.
class AppTest : public FakePlatformTest {
 protected:
    AppTest() {
        fake.files.AddDirectory(L"C:\\NXCLIP");
        AppPath = L"C:\\NXCLIP\\";
        FormatSetFile = AppPath + L"NXClip.nxf";
        HelpFile = AppPath + L"Nxclip.hlp";
        HelpPageDirectory = AppPath + L"HILFE\\";
    }

    const std::wstring kLog = L"C:\\NXCLIP\\PROTOKOL.TXT";
    std::string Log() const { return fake.files.Bytes(kLog).value_or("<no log>"); }
};
