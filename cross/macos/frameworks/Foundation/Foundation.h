// Declarations of Foundation, as far as Kelvane calls it.
#pragma once

#import <Foundation/NSBase.h>
#import <Foundation/NSCollections.h>
#import <Foundation/NSFormatters.h>
#import <Foundation/NSKeyValueObserving.h>
#import <Foundation/NSProcess.h>
#import <Foundation/NSString.h>
#import <Foundation/NSUserDefaults.h>
#import <Foundation/NSValues.h>
