# The regression of y on all other columns by read.csv and lm, for comparison with linear_regression.
# usage: Rscript lm.R FILE
# The classes of the columns are told beforehand, which makes read.csv ten times faster.
file <- commandArgs(trailingOnly = TRUE)[1]
classes <- sapply(read.csv(file, nrows = 1000, stringsAsFactors = TRUE), class)
reading <- system.time(data <- read.csv(file, colClasses = classes))[["elapsed"]]
fitting <- system.time(fit <- summary(lm(y ~ ., data = data)))[["elapsed"]]
cat(sprintf("read.csv %.2f s, lm and summary %.2f s\n", reading, fitting))
cat(sprintf("R squared %.15g, residual standard deviation %.15g, F %.15g\n",
            fit$r.squared, fit$sigma, fit$fstatistic[["value"]]))
