// Declarations of AppKit, as far as Kelvane calls it.
#pragma once

#import <AppKit/NSAppearance.h>
#import <AppKit/NSApplication.h>
#import <AppKit/NSControls.h>
#import <AppKit/NSDrawing.h>
#import <AppKit/NSLayout.h>
#import <AppKit/NSMenu.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSText.h>
#import <AppKit/NSView.h>
#import <AppKit/NSWindows.h>
#import <AppKit/NSWorkspace.h>
