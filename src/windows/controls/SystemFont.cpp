#include "windows/controls/SystemFont.h"

#include "windows/controls/Dpi.h"

LOGFONTW MessageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics{};
    if (MetricsForDpi(metrics, dpi)) return metrics.lfMessageFont;
    LOGFONTW font{};
    GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
    return font;
}

UniqueFont CreateMessageFont(UINT dpi, LONG weight) {
    LOGFONTW font = MessageFont(dpi);
    font.lfWeight = weight;
    return UniqueFont(CreateFontIndirectW(&font));
}
