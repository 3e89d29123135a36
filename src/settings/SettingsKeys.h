#pragma once

#include "base/Formats.h"
#include "settings/SettingsStore.h"

/// The keys of settings.ini with their readers' defaults. Numbers are plain decimal text, yes and no are
/// "True" and "False" (any number is read, too), ticks are "0" and "1".
namespace Ini {

inline const IniKey MP3_QualityMode("MP3 Settings", "MP3_QualityMode", "1");       ///< "1" Normal, "0" Studio
inline const IniKey MP3_EncodingMethod("MP3 Settings", "MP3_EncodingMethod", "0"); ///< "0" CBR, "1" VBR
inline const IniKey MP3_CBR_BitRate("MP3 Settings", "MP3_CBR_BitRate", "128");     ///< kb/s
inline const IniKey MP3_VBR_Quality("MP3 Settings", "MP3_VBR_Quality",
                                    "0"); ///< 0 to 9, 0 the slow, high quality end
inline const IniKey MP3_VBR_MaxBitRate("MP3 Settings", "MP3_VBR_MaxBitRate", "320"); ///< kb/s
inline const IniKey MP3_VBR_MinBitRate("MP3 Settings", "MP3_VBR_MinBitRate", "32");  ///< kb/s
inline const IniKey MP3_ChannelMode("MP3 Settings", "MP3_ChannelMode",
                                    "0"); ///< "0" Stereo, "1" J-Stereo, "2" Mono, "3" Dual Channel

inline const IniKey WMA_BitRate("WMA Settings", "WMA_BitRate", "128"); ///< kb/s
inline const IniKey WMA_SampleRate("WMA Settings", "WMA_SampleRate",
                                   "5"); ///< an index: 0 to 6 for 8000 to 48000 Hz
inline const IniKey WMA_EncodeStereo("WMA Settings", "WMA_EncodeStereo", "True");
inline const IniKey WMA_EnableDRM("WMA Settings", "WMA_EnableDRM", "False");

inline const IniKey OGG_UseAdvanced("OGG Settings", "OGG_UseAdvanced",
                                    "0"); ///< "1" lets the user set the limits; steers the dialog only
inline const IniKey OGG_BitRate("OGG Settings", "OGG_BitRate",
                                "128"); ///< kb/s, "0" for the encoder's own choice
inline const IniKey OGG_MaxBitRate("OGG Settings", "OGG_MaxBitRate", "0"); ///< kb/s, "0" for no limit
inline const IniKey OGG_MinBitRate("OGG Settings", "OGG_MinBitRate", "0"); ///< kb/s, "0" for no limit

inline const IniKey GridLines("Advanced", "GridLines", "True");
inline const IniKey BackColor("Advanced", "BackColor", "16777215"); ///< a colour number
inline const IniKey ForeColor("Advanced", "ForeColor", "0");        ///< a colour number
inline const IniKey FontBold("Advanced", "FontBold", "False");
inline const IniKey FontItalic("Advanced", "FontItalic", "False");
inline const IniKey FontName("Advanced", "FontName", "arial");
inline const IniKey FontSize("Advanced", "FontSize", "8"); ///< points, up to four decimals
inline const IniKey FontStrikethrough("Advanced", "FontStrikethrough", "False");
inline const IniKey FontUnderline("Advanced", "FontUnderline", "False");
inline const IniKey Toolbar_Style("Advanced", "Toolbar_Style", "1"); ///< "1" flat, "0" standard

inline const IniKey SaveID3("Other", "SaveID3", "True");
inline const IniKey OpenExplorer("Other", "Open Explorer", "True");
inline const IniKey DownloadFreeDB("Other", "Download FreeDB", "True");
inline const IniKey IKnow("Other", "IKnow", "False");

inline const IniKey UseProxy("Proxy", "Use Proxy", "0"); ///< a tick
inline const IniKey ProxyServer("Proxy", "Proxy Server", "");
inline const IniKey ProxyPort("Proxy", "Proxy Port", "");
inline const IniKey ProxyNeedLogin("Proxy", "Proxy Need Login", "0"); ///< a tick
inline const IniKey ProxyUserName("Proxy", "Proxy User Name", "");
inline const IniKey ProxyPassword("Proxy", "Proxy Password", ""); ///< as it was typed
inline const IniKey Timeout("Proxy", "Timeout", "30");            ///< seconds

/// A format's output folder; the default is one of its own below ProgramFolder.
inline IniKey outputDirectory(const SettingsStore &store, const Format &format)
{
    return {QStringLiteral("Directories"), format.name + QStringLiteral("_Output_Directory"),
            store.defaultFolder(format.folderName())};
}

} // namespace Ini
