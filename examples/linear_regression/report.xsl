<?xml version="1.0" encoding="UTF-8"?>
<!-- One self-contained HTML page of the StatXML document of a linear regression. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
                xmlns:s="http://nqcommon.example/xmlns/statxml-7.0" exclude-result-prefixes="s">
<xsl:include href="page.xsl"/>

<xsl:template match="s:StatXML" mode="kind">Linear regression</xsl:template>

<xsl:template match="s:StatXML" mode="about">
  <xsl:if test="s:TrainingSummary/@isIntercept = 'false'"> · without intercept: R² and F are about zero</xsl:if>
</xsl:template>

<xsl:template match="s:StatXML" mode="tiles">
  <xsl:variable name="statistics" select="s:TrainingSummary/s:Statistic"/>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">R²</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='rSquared']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Adjusted R²</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='adjustedRSquared']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Residual std. deviation</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='residualStdDev']/@value"/>
    <xsl:with-param name="note"
                    select="concat('df ', $statistics[@name='dfResidual']/@value)"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">F</xsl:with-param>
    <xsl:with-param name="value" select="s:FTest/@fStatistic"/>
    <xsl:with-param name="note" select="concat('df ', s:FTest/@df1, ' and ', s:FTest/@df2)"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Significance of F</xsl:with-param>
    <xsl:with-param name="value" select="s:FTest/@sig"/>
    <xsl:with-param name="isSignificance" select="true()"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">AIC</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='aic']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">BIC</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='bic']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Log-likelihood</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='logLik']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Durbin-Watson</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='durbinWatson']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Condition number</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='conditionNumber']/@value"/>
    <xsl:with-param name="note">of the correlations</xsl:with-param>
  </xsl:call-template>
</xsl:template>

<xsl:template match="s:StatXML" mode="fit">
  <h2>Residuals</h2>
  <div class="charts plots">
    <xsl:apply-templates select="s:BivariateData"/>
    <div class="card"><xsl:apply-templates select="s:TrainingSummary" mode="residuals"/></div>
    <xsl:if test="s:MultivariateData">
      <div class="card"><xsl:apply-templates select="s:MultivariateData"/></div>
    </xsl:if>
  </div>
</xsl:template>

<!-- ==== Tables ================================================================================ -->

<xsl:template match="s:ParameterEstimates">
  <table>
    <caption>Estimates, with 95% bounds; standardized: in standard deviations of target and column
    </caption>
    <thead>
      <tr><th scope="col">Parameter</th><th scope="col">Estimate</th><th scope="col">Std. error</th>
        <th scope="col">t</th><th scope="col">Significance</th><th scope="col">Lower 95%</th>
        <th scope="col">Upper 95%</th><th scope="col">Standardized</th></tr>
    </thead>
    <tbody><xsl:apply-templates select="s:ParameterStats"/></tbody>
  </table>
</xsl:template>

<xsl:template match="s:ParameterStats">
  <tr>
    <th scope="row"><xsl:value-of select="@paramName"/></th>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@estimate"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@stdError"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@tTest"/></xsl:call-template>
    <xsl:call-template name="significance"><xsl:with-param name="x" select="@sig"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@confIntervalLower"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@confIntervalUpper"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@standardized"/></xsl:call-template>
  </tr>
</xsl:template>

<xsl:template match="s:ModelTestStats">
  <table>
    <caption>What the fit loses without the input, and the variance inflation of its estimates
    </caption>
    <thead>
      <tr><th scope="col">Input</th><th scope="col">df</th><th scope="col">F</th>
        <th scope="col">Significance</th><th scope="col">VIF</th></tr>
    </thead>
    <tbody>
      <xsl:for-each select="s:FTest">
        <tr>
          <th scope="row"><xsl:value-of select="@fieldName"/></th>
          <td><xsl:value-of select="@df1"/></td>
          <xsl:call-template name="cell"><xsl:with-param name="x" select="@fStatistic"/></xsl:call-template>
          <xsl:call-template name="significance"><xsl:with-param name="x" select="@sig"/></xsl:call-template>
          <xsl:call-template name="cell"><xsl:with-param name="x" select="@vif"/></xsl:call-template>
        </tr>
      </xsl:for-each>
    </tbody>
  </table>
</xsl:template>

<xsl:template match="s:TrainingSummary" mode="residuals">
  <table>
    <caption>Target less fit</caption>
    <tbody>
      <tr><th scope="row">Minimum</th><xsl:call-template name="cell"><xsl:with-param name="x" select="s:Statistic[@name='residualMin']/@value"/></xsl:call-template></tr>
      <tr><th scope="row">First quartile</th><xsl:call-template name="cell"><xsl:with-param name="x" select="s:Statistic[@name='residualQ1']/@value"/></xsl:call-template></tr>
      <tr><th scope="row">Median</th><xsl:call-template name="cell"><xsl:with-param name="x" select="s:Statistic[@name='residualMedian']/@value"/></xsl:call-template></tr>
      <tr><th scope="row">Third quartile</th><xsl:call-template name="cell"><xsl:with-param name="x" select="s:Statistic[@name='residualQ3']/@value"/></xsl:call-template></tr>
      <tr><th scope="row">Maximum</th><xsl:call-template name="cell"><xsl:with-param name="x" select="s:Statistic[@name='residualMax']/@value"/></xsl:call-template></tr>
    </tbody>
  </table>
</xsl:template>

<!-- The cases of largest Cook's distance: a list for each column. -->
<xsl:template match="s:MultivariateData">
  <table>
    <caption>Cases that move the fit most; row 1 is the first below the header</caption>
    <thead>
      <tr><th scope="col">Row</th><th scope="col">Leverage</th><th scope="col">Cook’s distance</th>
        <th scope="col">Residual</th></tr>
    </thead>
    <tbody>
      <xsl:call-template name="influence-rows">
        <xsl:with-param name="rows" select="s:Coordinates[1]/s:Array"/>
        <xsl:with-param name="leverages" select="s:Coordinates[2]/s:Array"/>
        <xsl:with-param name="distances" select="s:Coordinates[3]/s:Array"/>
        <xsl:with-param name="residuals" select="s:Coordinates[4]/s:Array"/>
      </xsl:call-template>
    </tbody>
  </table>
</xsl:template>

<xsl:template name="influence-rows">
  <xsl:param name="rows"/>
  <xsl:param name="leverages"/>
  <xsl:param name="distances"/>
  <xsl:param name="residuals"/>
  <xsl:if test="$rows != ''">
    <tr>
      <th scope="row"><xsl:value-of select="substring-before(concat($rows, ' '), ' ')"/></th>
      <xsl:call-template name="cell"><xsl:with-param name="x" select="substring-before(concat($leverages, ' '), ' ')"/></xsl:call-template>
      <xsl:call-template name="cell"><xsl:with-param name="x" select="substring-before(concat($distances, ' '), ' ')"/></xsl:call-template>
      <xsl:call-template name="cell"><xsl:with-param name="x" select="substring-before(concat($residuals, ' '), ' ')"/></xsl:call-template>
    </tr>
    <xsl:call-template name="influence-rows">
      <xsl:with-param name="rows" select="substring-after($rows, ' ')"/>
      <xsl:with-param name="leverages" select="substring-after($leverages, ' ')"/>
      <xsl:with-param name="distances" select="substring-after($distances, ' ')"/>
      <xsl:with-param name="residuals" select="substring-after($residuals, ' ')"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- ==== Charts ================================================================================ -->

<!-- Points: darker for more cases. -->
<xsl:template match="s:BivariateData">
  <xsl:variable name="isNormal" select="@description = 'normal quantiles'"/>
  <xsl:variable name="x0" select="s:Statistic[@name='xMinimum']/@value"/>
  <xsl:variable name="x1" select="s:Statistic[@name='xMaximum']/@value"/>
  <xsl:variable name="y0" select="s:Statistic[@name='yMinimum']/@value"/>
  <xsl:variable name="y1" select="s:Statistic[@name='yMaximum']/@value"/>
  <xsl:variable name="xs" select="340 div ($x1 - $x0 + ($x1 = $x0))"/>
  <xsl:variable name="ys" select="200 div ($y1 - $y0 + ($y1 = $y0))"/>
  <div class="card">
    <h3>
      <xsl:choose>
        <xsl:when test="$isNormal">Quantiles of the residuals by normal quantiles</xsl:when>
        <xsl:otherwise>Residual by fit</xsl:otherwise>
      </xsl:choose>
    </h3>
    <svg viewBox="0 0 420 240" role="img" aria-label="{@description}">
      <clipPath id="frame"><rect x="65" y="5" width="350" height="210"/></clipPath>
      <rect class="frame" x="65" y="5" width="350" height="210"/>
      <xsl:choose>
        <xsl:when test="$isNormal">
          <line class="guide" clip-path="url(#frame)" x1="70" x2="410" y1="{210 - ($x0 - $y0) * $ys}" y2="{210 - ($x1 - $y0) * $ys}"/>
        </xsl:when>
        <xsl:when test="$y0 &lt; 0 and $y1 &gt; 0">
          <line class="guide" x1="65" x2="415" y1="{210 + $y0 * $ys}" y2="{210 + $y0 * $ys}"/>
        </xsl:when>
      </xsl:choose>
      <xsl:call-template name="points">
        <xsl:with-param name="x" select="s:Coordinates[1]/s:Array"/>
        <xsl:with-param name="y" select="s:Coordinates[2]/s:Array"/>
        <xsl:with-param name="n" select="s:Coordinates[3]/s:Array"/>
        <xsl:with-param name="x0" select="$x0"/>
        <xsl:with-param name="y0" select="$y0"/>
        <xsl:with-param name="xs" select="$xs"/>
        <xsl:with-param name="ys" select="$ys"/>
        <xsl:with-param name="most" select="s:Statistic[@name='mostCases']/@value"/>
      </xsl:call-template>
      <text x="60" y="15" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$y1"/></xsl:call-template></text>
      <text x="60" y="213" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$y0"/></xsl:call-template></text>
      <text x="66" y="232"><xsl:call-template name="plain"><xsl:with-param name="x" select="$x0"/></xsl:call-template></text>
      <text x="415" y="232" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$x1"/></xsl:call-template></text>
    </svg>
  </div>
</xsl:template>

</xsl:stylesheet>
