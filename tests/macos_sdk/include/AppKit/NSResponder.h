#pragma once

#import <AppKit/NSEvent.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

// What keys do, by the user's bindings.
@protocol NSStandardKeyBindingResponding <NSObject>
@optional
- (void)cancelOperation:(nullable id)sender;
@end

@interface NSResponder : NSObject <NSCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(nullable, assign) NSResponder* nextResponder;
- (void)mouseDown:(NSEvent*)event;
- (void)mouseUp:(NSEvent*)event;
- (void)rightMouseDown:(NSEvent*)event;
- (void)keyDown:(NSEvent*)event;
- (void)scrollWheel:(NSEvent*)event;
- (BOOL)performKeyEquivalent:(NSEvent*)event;
@property(readonly) BOOL acceptsFirstResponder;
@end

@interface NSResponder (NSStandardKeyBindingMethods) <NSStandardKeyBindingResponding>
@end

NS_ASSUME_NONNULL_END
