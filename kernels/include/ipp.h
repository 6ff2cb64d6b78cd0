/* The whole numeric backend interface. */
#ifndef IPP_H
#define IPP_H

#include "ipptypes.h"
#include "ippcore.h"
#include "ipps.h"
#include "ippi.h"

#endif
