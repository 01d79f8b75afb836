/** @file
 * Version of Quillmar and of these headers, by semantic versioning: an add-in that was built with
 * version MAJOR.x works with every module of the same MAJOR that is not older than x.
 *
 * The numbers stand here only; build, packages, the export GetQuillmarVersion and the version
 * resource of Quillmar.dll take them from this file. An add-in asks GetQuillmarVersion; whoever
 * does not load the module reads the file's version resource (GetFileVersionInfo, VerQueryValue
 * "\\": the two upper words are MAJOR and MINOR, the third is PATCH).
 */
#ifndef QUILLMAR_VERSION_H
#define QUILLMAR_VERSION_H

#define QM_VERSION_MAJOR 0 /**< grows when add-ins have to be built anew */
#define QM_VERSION_MINOR 1 /**< grows with what is added */
#define QM_VERSION_PATCH 0 /**< grows with what is mended */

/** One number that grows with the version, for the preprocessor. */
#define QM_VERSION_NUMBER (QM_VERSION_MAJOR * 10000 + QM_VERSION_MINOR * 100 + QM_VERSION_PATCH)

/** @cond */
#define QM_VERSION_JOINED(major, minor, patch) #major "." #minor "." #patch
#define QM_VERSION_SPELT(major, minor, patch) QM_VERSION_JOINED(major, minor, patch)
/** @endcond */
/** "MAJOR.MINOR.PATCH". */
#define QM_VERSION_TEXT QM_VERSION_SPELT(QM_VERSION_MAJOR, QM_VERSION_MINOR, QM_VERSION_PATCH)

#endif /* QUILLMAR_VERSION_H */
