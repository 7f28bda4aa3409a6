#include "updates/views/FrameworkBackend.h"

#import <AppKit/AppKit.h>

// The part of the framework's interface that is used; building does not need its headers.
@interface NSObject (ZoltUpdaterController)
- (instancetype)initWithStartingUpdater:(BOOL)starting updaterDelegate:(id)updater userDriverDelegate:(id)driver;
- (void)checkForUpdates:(id)sender;
- (id)updater;
@end

namespace zolt {

namespace {

class FrameworkBackend : public UpdaterBackend {
 public:
  FrameworkBackend(Class type, bool startingUpdater)
      : m_controller([[type alloc] initWithStartingUpdater:startingUpdater updaterDelegate:nil userDriverDelegate:nil]) {}

  void checkForUpdates() override { [m_controller checkForUpdates:nil]; }
  bool canCheckForUpdates() const override {
    return [[[m_controller updater] valueForKey:@"canCheckForUpdates"] boolValue];
  }

 private:
  NSObject* m_controller;  // for as long as the program runs
};

}  // namespace

std::unique_ptr<UpdaterBackend> makeFrameworkBackend(bool startingUpdater) {
  NSString* path = [[NSBundle mainBundle].privateFrameworksPath stringByAppendingPathComponent:@"Sparkle.framework"];
  if (![[NSBundle bundleWithPath:path] load]) return nullptr;
  Class type = NSClassFromString(@"SPUStandardUpdaterController");
  return type ? std::make_unique<FrameworkBackend>(type, startingUpdater) : nullptr;
}

}  // namespace zolt
