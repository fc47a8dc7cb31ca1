#pragma once

/* The numbers that every document program gives its usual commands, bars and strings; read by the resource
   compiler too, hence macros. */

#define ID_APP_ABOUT 57664
#define ID_APP_EXIT 57665
#define ID_VIEW_TOOLBAR 59392
#define ID_VIEW_STATUS_BAR 59393

#define ID_SEPARATOR 0
#define ID_INDICATOR_EXT 59136
#define ID_INDICATOR_CAPS 59137
#define ID_INDICATOR_NUM 59138
#define ID_INDICATOR_SCRL 59139
#define ID_INDICATOR_OVR 59140
#define ID_INDICATOR_REC 59141

/* Prompts of the system menu's commands, in the order of SC_SIZE and on. */
#define IDS_SYSTEM_COMMANDS 0xEF00
#define IDS_SYSTEM_SIZE 0xEF00
#define IDS_SYSTEM_MOVE 0xEF01
#define IDS_SYSTEM_MINIMIZE 0xEF02
#define IDS_SYSTEM_MAXIMIZE 0xEF03
#define IDS_SYSTEM_RESTORE 0xEF12

/* The resource type of toolbars. */
#define RT_TOOLBAR_NUMBER 241
