#pragma once

// The topics of the help: NXCLIP_HELP_TOPIC(name in the code, context number, page). The number is what the
// help file maps to the topic, the page is its keyword in the help's sources and the HTML page's name without
// ".html". The tools that build the help read the lines of this list, so each stays on a line of its own; a
// number once given is not given again.

#define NXCLIP_HELP_TOPICS                                          \
    NXCLIP_HELP_TOPIC(Contents, 1, "inhalt")                        \
    NXCLIP_HELP_TOPIC(FirstSteps, 2, "erste-schritte")              \
    NXCLIP_HELP_TOPIC(Keys, 3, "tasten")                            \
    NXCLIP_HELP_TOPIC(About, 4, "info")                             \
    NXCLIP_HELP_TOPIC(MainWindow, 10, "hauptfenster")               \
    NXCLIP_HELP_TOPIC(Capture, 11, "erfassen")                      \
    NXCLIP_HELP_TOPIC(Restore, 12, "uebernehmen")                   \
    NXCLIP_HELP_TOPIC(Preview, 13, "vorschau")                      \
    NXCLIP_HELP_TOPIC(DragAndDrop, 14, "ziehen")                    \
    NXCLIP_HELP_TOPIC(Files, 82, "mitnehmen")                       \
    NXCLIP_HELP_TOPIC(TrayIcon, 15, "infobereich")                  \
    NXCLIP_HELP_TOPIC(HotKey, 16, "tastenkombination")              \
    NXCLIP_HELP_TOPIC(Profiles, 20, "profile")                      \
    NXCLIP_HELP_TOPIC(ProfileProperties, 21, "profileigenschaften") \
    NXCLIP_HELP_TOPIC(Templates, 22, "vorlagen")                    \
    NXCLIP_HELP_TOPIC(FirstStart, 23, "erststart")                  \
    NXCLIP_HELP_TOPIC(FormatSets, 30, "formatsaetze")               \
    NXCLIP_HELP_TOPIC(ChangeAlias, 31, "formatsatzname")            \
    NXCLIP_HELP_TOPIC(Options, 40, "optionen")                      \
    NXCLIP_HELP_TOPIC(Search, 50, "suchen")                         \
    NXCLIP_HELP_TOPIC(ClipProperties, 60, "clipeigenschaften")      \
    NXCLIP_HELP_TOPIC(FolderProperties, 61, "ordnereigenschaften")  \
    NXCLIP_HELP_TOPIC(DirectoryChooser, 62, "verzeichnisauswahl")   \
    NXCLIP_HELP_TOPIC(FileChooser, 63, "dateiauswahl")              \
    NXCLIP_HELP_TOPIC(NamePrompt, 64, "namenseingabe")              \
    NXCLIP_HELP_TOPIC(Diagnosis, 70, "diagnose")                    \
    NXCLIP_HELP_TOPIC(FormatQuery, 71, "formatabfrage")             \
    NXCLIP_HELP_TOPIC(CommandLine, 81, "befehlszeile")
