/* Ids of the program's dialogs and their controls; also read by the resource compiler. */
#pragma once

#define DOCTOR_DIALOG 100
#define TRACE_DIALOG 101
#define REPORT_TEXT 1001
#define COPY_BUTTON 1002
#define SAVE_BUTTON 1003
#define CURE_BUTTON 1004
#define TRACE_BUTTON 1005
#define WRITE_BOX 1006
#define PROBLEMS_BOX 1007
#define EMPTY_BUTTON 1008
