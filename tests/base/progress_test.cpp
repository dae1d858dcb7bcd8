#include "base/progress.h"

#include "support/counted_progress.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(ProgressSteps, ContinueWithoutAProgress) {
  ProgressSteps steps(nullptr, WorkStage::Reading, 10);
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(steps.Next());
  EXPECT_FALSE(IsCanceled(nullptr));
}

TEST(ProgressSteps, ReportTheFirstStepAndThenEachStride) {
  CountedProgress progress;
  ProgressSteps steps(&progress, WorkStage::Solving, 10, 4);
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(steps.Next());
  EXPECT_EQ(progress.stages.size(), 3U);  // before steps 0, 4 and 8
  EXPECT_EQ(progress.stages.front(), WorkStage::Solving);
  EXPECT_TRUE(progress.inBounds);
}

TEST(ProgressSteps, EndAtTheCanceledStepAndStayEnded) {
  CountedProgress progress(2);
  ProgressSteps steps(&progress, WorkStage::Reading, 10, 3);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(steps.Next());
  for (int i = 0; i < 8; ++i) EXPECT_FALSE(steps.Next());
  EXPECT_TRUE(progress.Canceled());
  EXPECT_EQ(progress.stages.size(), 2U);  // steps that are not made are not reported
}

TEST(MustFinish, KeepsWorkFromBeingCanceled) {
  CountedProgress progress(1);
  {
    const MustFinish outer(&progress);
    const MustFinish inner(&progress);
    ProgressSteps steps(&progress, WorkStage::Solving, 2);
    EXPECT_TRUE(steps.Next());
    EXPECT_TRUE(steps.Next());
    EXPECT_FALSE(progress.Canceled());
  }
  EXPECT_TRUE(progress.Canceled());
  const MustFinish ofNothing(nullptr);
}

}  // namespace
}  // namespace orvane
