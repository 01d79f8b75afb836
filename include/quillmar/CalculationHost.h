/** @file
 * The automation object of the calculation host `Hexaplan.exe` and the window messages that the
 * suite registers.
 *
 * Methods are called by dispatch identifier; texts travel as automation texts (converted from
 * the system code page), integers as 32-bit integers.
 */
#ifndef QUILLMAR_CALCULATIONHOST_H
#define QUILLMAR_CALCULATIONHOST_H

/** File name of the program. */
#define QM_HOST_PROGRAM "Hexaplan.exe"
/** Name under which its class is registered. */
#define QM_HOST_PROGID "HEXAPLAN.CBASE"
/** Identifier of that class. */
#define QM_HOST_CLASS_ID "{ABF01766-499F-11CF-BE62-444553540000}"

/** Posted by the host to the callback window when a calculation is done. No parameters: what
 * happened is asked from the host (callback code and list). */
#define QM_MESSAGE_CALLBACK "UTCallbackMsg"
/** Posted by the module to itself: run the queued function. No parameters. */
#define QM_MESSAGE_CALL_FUNCTION "CallUTFuncMsg"
/** Posted by a hidden window to itself when something showed it. No parameters. */
#define QM_MESSAGE_HIDE "VXHideMe"

/** Dispatch identifiers. Arguments -> result. */
enum QmHostMethod {
  QM_HOST_SHOW_CALCULATION = 2,    /**< text protocol id -> int */
  QM_HOST_CALLBACK_CODE = 3,       /**< none -> int */
  QM_HOST_CALLBACK_LIST = 7,       /**< none -> text: protocol ids joined by "," */
  QM_HOST_IS_READY = 0x10,         /**< none -> int, 1 = ready */
  QM_HOST_COMMAND = 0x13,          /**< int -> int */
  QM_HOST_WRITE_FILE = 0x18,       /**< text protocol id, int -> 16-bit int */
  QM_HOST_RUN_COMMAND = 0x1B,      /**< text protocol id -> int */
  QM_HOST_SESSION = 0x1D,          /**< int mode, text callback window, text, text -> none */
  QM_HOST_SHOW_FLAG = 0x1E,        /**< int -> int */
  QM_HOST_COMPANION_FOLDER = 0x20, /**< none -> text */
  QM_HOST_SETTINGS_NAME = 0x21,    /**< text -> int */
  QM_HOST_ANNOUNCE = 0x22,         /**< text protocol id -> int */
  QM_HOST_SOLVE_ONE_LINK = 0x25,   /**< text, text -> int */
  QM_HOST_INIT_SOLUTION = 0x26,    /**< text -> int */
  QM_HOST_DRAWN = 0x27,            /**< text protocol id or empty -> int */
  QM_HOST_END_SOLUTION = 0x29,     /**< none -> none */
  QM_HOST_SYNCHRONIZE = 0x2A,      /**< text, int -> int */
  QM_HOST_EDIT_ONE_LINK = 0x2B,    /**< text, text -> int */
  QM_HOST_EDIT_LINKS = 0x2C,       /**< text -> int */
  QM_HOST_SET_CAD_SPECIFIC = 0x2F, /**< text folder name, text extensions -> int; if offered */
  QM_HOST_UPDATE_ALL = 0x30,       /**< none -> none */
  QM_HOST_SET_SMART_MODE = 0x31,   /**< int -> none; if offered */
  QM_HOST_SET_CAD_WINDOW = 0x32,   /**< int window -> int; if offered */
  QM_HOST_FAMILY_TABLE = 0x33,     /**< text, text -> int; if offered */
  QM_HOST_UPDATE_EXT_DATA = 0x34   /**< text protocol id, int window -> boolean; if offered */
};

/** @name Names under which the methods marked "if offered" are looked up
 * @{ */
#define QM_HOST_NAME_SET_CAD_SPECIFIC "SetCadSpecific" /**< of QM_HOST_SET_CAD_SPECIFIC */
#define QM_HOST_NAME_SET_SMART_MODE "SetSmartMode"     /**< of QM_HOST_SET_SMART_MODE */
#define QM_HOST_NAME_SET_CAD_WINDOW "SetCADHwnd"       /**< of QM_HOST_SET_CAD_WINDOW */
#define QM_HOST_NAME_FAMILY_TABLE "GenerateFamTable"   /**< of QM_HOST_FAMILY_TABLE */
#define QM_HOST_NAME_UPDATE_EXT_DATA "UpdateExtData"   /**< of QM_HOST_UPDATE_EXT_DATA */
/** @} */

/** Codes that QM_HOST_CALLBACK_CODE answers; any other code asks for no CAD action. */
enum QmCallbackCode {
  QM_CALLBACK_NEW_PART = 150,
  QM_CALLBACK_CLIPBOARD_OR_CHANGED_TYPE = 155,
  QM_CALLBACK_RECALCULATED = 160,
  QM_CALLBACK_NEW_VIEW = 300,
  QM_CALLBACK_FROM_REFERENCE = 400
};

#endif /* QUILLMAR_CALCULATIONHOST_H */
