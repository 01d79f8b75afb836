/** @file
 * Pages that a CAD add-in adds to the options sheet of Quillmar (export SetOptions).
 *
 * A page is a QmOptionsPage of the add-in. Quillmar copies it and its title when SetOptions is
 * called; the functions, the context and the module with the dialog template must last until the
 * next SetOptions (CreateFileName makes one, too) or until the library is unloaded. The page and
 * what it points to belong to the add-in; nothing of it is freed.
 *
 * A pointer that does not lead to a page (wrong signature or size, unreadable memory) is skipped
 * and reported; the other pages are added all the same.
 */
#ifndef QUILLMAR_OPTIONSPAGE_H
#define QUILLMAR_OPTIONSPAGE_H

#include "quillmar/Conventions.h"

/** "QMOP", lowest byte first. */
#define QM_OPTIONS_PAGE_SIGNATURE 0x504F4D51u

/** More pages than this are not added to one sheet. */
#define QM_MOST_OPTIONS_PAGES 64

/** What a page is told. Only QM_PAGE_VALIDATE has a result. */
enum QmPageEvent {
  QM_PAGE_OPEN = 1,     /**< the page's window was made; it is shown for the first time */
  QM_PAGE_VALIDATE = 2, /**< the user pressed OK or leaves the page; 0 keeps the page open */
  QM_PAGE_ACCEPT = 3,   /**< every page was content: take the values over */
  QM_PAGE_CANCEL = 4,   /**< the user cancelled */
  QM_PAGE_HELP = 5      /**< the user asked for help on this page */
};

#ifdef __cplusplus
extern "C" {
#endif

/** A page: its dialog and whom it belongs to. */
typedef struct QmOptionsPage {
  uint32_t signature;     /**< QM_OPTIONS_PAGE_SIGNATURE */
  uint32_t size;          /**< sizeof(QmOptionsPage), in bytes */
  QmModule resources;     /**< module that holds the dialog template */
  int32_t dialogTemplate; /**< its number in that module's resources */
  const char* title;      /**< text of the tab; null: the template's caption */
  void* context;          /**< handed to the functions */
  /** Tells the page of a QmPageEvent. `window` is the page's dialog, 0 where there is no window
   * system and for pages that the user never looked at, which hear of the end all the same. Must
   * not be null. */
  int(QM_CDECL* onEvent)(void* context, int event, QmWindow window);
  /** A window message of the page's dialog, with the meanings of the window system; nonzero when
   * it was handled. May be null. */
  int(QM_CDECL* onMessage)(void* context, QmWindow window, uint32_t message, uintptr_t wParam,
                           intptr_t lParam);
} QmOptionsPage;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* QUILLMAR_OPTIONSPAGE_H */
