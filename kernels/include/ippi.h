/* Image-processing functions of the numeric backend (two-dimensional). */
#ifndef IPPI_H
#define IPPI_H

#include "ipptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Image memory: each row starts 64-byte aligned; *pStepBytes receives the
 * distance between rows in bytes. */
IPPAPI(Ipp32f *, ippiMalloc_32f_C1, (int widthPixels, int heightPixels, int *pStepBytes))
IPPAPI(Ipp32f *, ippiMalloc_32f_C3, (int widthPixels, int heightPixels, int *pStepBytes))
IPPAPI(void, ippiFree, (void *ptr))

/* Border copies and the wavelet transform. */

/* Edges and lines. */

#ifdef __cplusplus
}
#endif

#endif
