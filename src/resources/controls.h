#pragma once

// The numbers of all controls, menus and dialog templates, under the names that the code uses for them.
// Included by the forms and by the resource files, so there are plain macros only. A control with several
// buttons is a row of numbers from its own on: chkSaveUnknown + 6 is its sixth box.

// Buttons that every dialog shares; Enter and Escape press the first two.
#define cb_ok 1
#define cb_cancel 2
#define cb_help 9

// frmMain
#define tvTreeView 1000
#define lvListView 1001
#define tabFormat 1002
#define tbToolBar 1003
#define sbStatusBar 1004
#define imgSplitter 1005
#define picSplitter 1006
#define lblTitle 1007
#define tbPreviewText 1008
#define tbPreviewRtf 1009
#define picPreviewDIB 1010
#define imgDIB 1011
#define picTemp 1012

// frmOption
#define tabOptions 1100
#define chkTopWindow 1101
#define chkSound 1102
#define tbSoundFile 1103
#define cbFile 1104
#define chkSnapDialog 1105
#define chkIconAfterSnap 1106
#define chkTray 1107
#define chkIcon 1108
#define chkTooltips 1109
#define chkLock 1110
#define chkSplash 1111
#define chkAutoSnap 1112
#define tbInfo 1113
#define optFormatTitle 1114
#define optTextTitle 1115
#define tbTextLen 1116
#define Option1 1117
#define tbPrefix 1118
#define chkDblClick 1119
#define chkIconAfterSet 1120
#define chkSetBeep 1121
#define tbClipLen 1122
#define tbUnknownFormatSet 1123
#define tbKeyActivate 1124
#define OptFSet 1125
#define chkSaveUnknown 1127

// frmFormatSets and frmChangeAlias
#define lstAlias 1200
#define lstFormat 1201
#define Command1 1202
#define cbChange 1203
#define cbDelete 1204
#define cbHilfe 1205
#define txtOld 1206
#define txtNew 1207

// frmProfileProp, frmSelectTemplate and frmFirstStart
#define tbName 1300
#define tbDir 1301
#define cbDir 1302
#define chkLocked 1303
#define chkGlobalFree 1304
#define tbTemplate 1305
#define cb_template 1306
#define lbTemplate 1307
#define lbStructCount 1308
#define lbClipCount 1309
#define lstTemplate 1310
#define lbName 1311
#define lbInfo 1312
#define lbTitle 1313
#define lbZusatz 1314
#define chkDialog 1315
#define chkTemplate 1316

// frmSearch
#define tbSearch 1400
#define chkProfile 1401
#define chkStruct 1402
#define chkClip 1403
#define chkName 1404
#define chkInfo 1405
#define chkValue 1406
#define optSearchPattern 1407
#define optUpDown 1409

// frmClipProp, frmDirSelect and frmFileSel
#define tbTime 1500
#define lbFormatCount 1501
#define tbFile 1502
#define cmb_drive 1503
#define lstDir 1504
#define lstFile 1505
#define cmb_filter 1506
#define cbNew 1507

// frmDiagnose, frmErrorMsg, frmAbout and frmSplash
#define lbFirstViewer 1600
#define lbOwnViewer 1601
#define lbNextViewer 1602
#define lbHookedWindow 1603
#define lbOriginalProc 1604
#define lbOwner 1605
#define lbLastUpdate 1606
#define lstClipboard 1607
#define cbRefresh 1608
#define lstMessages 1609
#define lbVersion 1610
#define cbSysInfo 1611
#define lblClose 1612
#define imgLogo 1613

// Menus of frmMain
#define mnuFileNew 2000
#define m_importProfil 2001
#define mnuFileProperties 2002
#define mnuFileClose 2003
#define m_edit_insert 2004
#define m_copyToClipboard 2005
#define m_edit_newstruct 2006
#define m_edit_delete 2007
#define m_edit_rename 2008
#define m_activate 2009
#define m_search 2010
#define m_searcg_again 2011
#define mnuViewToolbar 2012
#define mnuViewStatusBar 2013
#define mnuListViewLarge 2014
#define mnuListViewSmall 2015
#define mnuListViewList 2016
#define mnuListViewDetails 2017
#define mnuListViewPreview 2018
#define m_stretchmode 2019
#define mnuViewRefresh 2020
#define mnuViewOptions 2021
#define m_extra_fs 2022
#define m_ext_act_format 2023
#define m_ext_fa 2024
#define m_ext_diag 2025
#define m_copy_info 2026
#define m_quickstart 2027
#define m_reconnect 2028
#define m_test_askformat 2029
#define m_test_exithook 2030
#define mnuHelpContents 2031
#define mnuHelpSearch 2032
#define m_help_keys 2033
#define mnuHelpAbout 2034

// Context menus of the tree: nothing, profile, folder, clip
#define m_pNN_NewProfil 2100
#define m_pNN_insert_profile 2101
#define m_profile_active 2102
#define m_pp_substruct_insert 2103
#define m_PPNewProfil 2104
#define m_PP_ImportProfil 2105
#define m_PP_UnlinkProfil 2106
#define m_del_profile 2107
#define m_pp_prop 2108
#define m_struct_active 2109
#define m_substruct_insert 2110
#define m_structDelete 2111
#define m_ps_prop 2112
#define m_to_clipboard 2113
#define m_pop_newstruct 2114
#define m_delnode 2115
#define m_clip_prop 2116

// Menu of the tray icon
#define m_tray_restore 2200
#define m_tray_autosnap 2201
#define m_tray_snap 2202
#define m_tray_quit 2203

// Tool bar buttons in their order
#define tbbProfil 2300
#define tbbImport 2301
#define tbbCopy 2302
#define tbbDelete 2303
#define tbbProperties 2304
#define tbbViewLarge 2305
#define tbbViewSmall 2306
#define tbbViewList 2307
#define tbbViewDetails 2308
#define tbbViewPreview 2309
#define tbbViewProperties 2310
#define tbbLock 2311
#define tbbSnap 2312
#define tbbAutoDetect 2313

// Dialog templates
#define IDD_frmOption 200
#define IDD_frmOptionGeneral 201
#define IDD_frmOptionClipboard 202
#define IDD_frmOptionSets 203
#define IDD_frmOptionInfo 204
#define IDD_frmFormatSets 205
#define IDD_frmChangeAlias 206
#define IDD_frmProfileProp 207
#define IDD_frmSelectTemplate 208
#define IDD_frmFirstStart 209
#define IDD_frmSearch 210
#define IDD_frmClipProp 211
#define IDD_frmStructProp 212
#define IDD_frmDirSelect 213
#define IDD_frmFileSel 214
#define IDD_frmTextInput 215
#define IDD_frmDiagnose 216
#define IDD_frmErrorMsg 217
#define IDD_frmAbout 218
#define IDD_frmSplash 219

// Menus and keys
#define IDM_frmMain 300
#define m_poptree 301
#define m_popStruct 302
#define m_popProfile 303
#define m_popNoNode 304
#define IDM_tray 305
// A submenu has no number of its own; these are the places of the two that the code changes.
#define m_test 4
#define mnuListViewMode 3
#define IDA_frmMain 310
