#pragma once

// The declarations that the sources use, written from CoreFoundation's documentation. With them,
// the sources for macOS can be compiled on other systems. They have no definitions, so nothing can
// be linked.

#include <cstdint>

extern "C" {

using Boolean = unsigned char;
using CFTypeID = unsigned long;
using CFIndex = long;
using CFOptionFlags = unsigned long;
using CFTypeRef = const void*;
using CFPropertyListRef = CFTypeRef;
using CFAllocatorRef = const struct __CFAllocator*;
using CFArrayRef = const struct __CFArray*;
using CFDataRef = const struct __CFData*;
using CFDictionaryRef = const struct __CFDictionary*;
using CFErrorRef = struct __CFError*;
using CFNumberRef = const struct __CFNumber*;
using CFStringRef = const struct __CFString*;
using CFURLRef = const struct __CFURL*;

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFStringRef kCFPreferencesCurrentUser;
extern const CFStringRef kCFPreferencesAnyHost;

enum CFNumberType : CFIndex { kCFNumberSInt64Type = 4, kCFNumberDoubleType = 13 };
enum CFURLBookmarkCreationOptions : CFOptionFlags {
    kCFURLBookmarkCreationWithSecurityScope = 1UL << 11
};
enum CFURLBookmarkResolutionOptions : CFOptionFlags {
    kCFURLBookmarkResolutionWithSecurityScope = 1UL << 10
};

void CFRelease(CFTypeRef object);
CFTypeRef CFRetain(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFStringGetTypeID();
CFTypeID CFDataGetTypeID();
CFTypeID CFNumberGetTypeID();
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

CFDataRef CFURLCreateBookmarkData(CFAllocatorRef allocator, CFURLRef url,
                                  CFURLBookmarkCreationOptions options,
                                  CFArrayRef resourcePropertiesToInclude, CFURLRef relativeToURL,
                                  CFErrorRef* error);
CFURLRef CFURLCreateByResolvingBookmarkData(CFAllocatorRef allocator, CFDataRef bookmark,
                                            CFURLBookmarkResolutionOptions options,
                                            CFURLRef relativeToURL,
                                            CFArrayRef resourcePropertiesToInclude,
                                            Boolean* isStale, CFErrorRef* error);
Boolean CFURLStartAccessingSecurityScopedResource(CFURLRef url);
void CFURLStopAccessingSecurityScopedResource(CFURLRef url);

CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef applicationID,
                                         CFStringRef userName, CFStringRef hostName);
void CFPreferencesSetValue(CFStringRef key, CFPropertyListRef value, CFStringRef applicationID,
                           CFStringRef userName, CFStringRef hostName);
Boolean CFPreferencesSynchronize(CFStringRef applicationID, CFStringRef userName,
                                 CFStringRef hostName);
}
