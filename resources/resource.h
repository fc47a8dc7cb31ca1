#pragma once

#include "framework/standard_ids.h"

/* Every resource number of the program; read by the resource compiler too, hence macros. */

#define IDR_MAINFRAME 128
#define IDR_DOCUMENT_ICON 129
#define IDR_CONTEXT_MENU 172

#define IDB_TOOLBAR_HOT 156
#define IDB_TOOLBAR 157
#define IDB_TOOLBAR_DISABLED 158

#define IDD_ABOUT 100
#define IDD_ANALYZE 101
#define IDD_UNDO 163
#define IDD_COMPACT 164
#define IDD_COMPACT_SUMMARY 165
#define IDD_RESTORE 166
#define IDD_BACKUP 167

#define IDC_LAST_KEY 1010
#define IDC_CURRENT_KEY 1011
#define IDC_ANALYZE_LABEL 1013
#define IDC_DATED_LIST 1027
#define IDC_DELETE 1029
#define IDC_COMPACT_PROGRESS 1032
#define IDC_BACKUP_PROGRESS 1033
#define IDC_SUMMARY_LIST 1034
#define IDC_ANALYZE_PROGRESS 1039
#define IDC_HIVES_PROGRESS 1041
#define IDC_ABOUT_VERSION 1011
#define IDC_ABOUT_ICON 1012
#define IDC_WEB_LINK 1037
#define IDC_MAIL_LINK 1038

#define ID_CLEAN 32807
#define ID_HELP_CONTENT 32823
#define ID_CHECK_ALL 32825
#define ID_UNCHECK 32826
#define ID_CHECK 32827
#define ID_ANALYZE 32828
#define ID_UNDO 32830
#define ID_COMPACT 32835
#define ID_BACKUP 32836
#define ID_RESTORE 32837
#define ID_OPEN_REGISTRY_EDITOR 32839

#define IDS_APP_TITLE 57344
/* Prompts kept for commands that go by other numbers now. */
#define IDS_COMPACT_PROMPT 32831
#define IDS_BACKUP_PROMPT 32833
#define IDS_RESTORE_PROMPT 32834
