<?xml version="1.0" encoding="UTF-8"?>
<!-- One self-contained HTML page of the StatXML document of a logistic regression. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
                xmlns:s="http://nqcommon.example/xmlns/statxml-7.0" exclude-result-prefixes="s">
<xsl:include href="page.xsl"/>

<xsl:template match="s:StatXML" mode="kind">Logistic regression</xsl:template>

<xsl:template match="s:StatXML" mode="about">
  <xsl:variable name="summary" select="s:TrainingSummary"/>
  <xsl:text> · the odds of </xsl:text><b><xsl:value-of select="$summary/@event"/></b> against
  <b><xsl:value-of select="$summary/@other"/></b><xsl:text> · </xsl:text>
  <xsl:value-of select="$summary/s:Statistic[@name='events']/@value"/> events ·
  <xsl:value-of select="$summary/s:Statistic[@name='iterations']/@value"/> iterations<xsl:if test="$summary/@converged = 'false'">, not converged</xsl:if>
</xsl:template>

<xsl:template match="s:StatXML" mode="tiles">
  <xsl:variable name="statistics" select="s:TrainingSummary/s:Statistic"/>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Deviance</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='deviance']/@value"/>
    <xsl:with-param name="note" select="concat('df ', $statistics[@name='dfResidual']/@value)"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Null deviance</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='nullDeviance']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Likelihood ratio</xsl:with-param>
    <xsl:with-param name="value" select="s:ChiTest/@chiSquare"/>
    <xsl:with-param name="note" select="concat('chi square, df ', s:ChiTest/@df1)"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">Its significance</xsl:with-param>
    <xsl:with-param name="value" select="s:ChiTest/@sig"/>
    <xsl:with-param name="isSignificance" select="true()"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">R² (McFadden)</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='mcFadden']/@value"/>
  </xsl:call-template>
  <xsl:call-template name="tile">
    <xsl:with-param name="name">R² (Nagelkerke)</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='nagelkerke']/@value"/>
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
    <xsl:with-param name="name">ROC area</xsl:with-param>
    <xsl:with-param name="value" select="$statistics[@name='area']/@value"/>
  </xsl:call-template>
</xsl:template>

<xsl:template match="s:StatXML" mode="fit">
  <h2>Events and probabilities</h2>
  <div class="charts">
    <xsl:apply-templates select="s:BivariateData"/>
    <div class="card"><xsl:apply-templates select="s:Matrix[@kind = 'any']"/></div>
  </div>
</xsl:template>

<!-- ==== Tables ================================================================================ -->

<xsl:template match="s:ParameterEstimates">
  <table>
    <caption>Estimates are logarithms of odds ratios; the bounds are those of the odds ratio</caption>
    <thead>
      <tr><th scope="col">Parameter</th><th scope="col">Estimate</th><th scope="col">Std. error</th>
        <th scope="col">z</th><th scope="col">Significance</th><th scope="col">Odds ratio</th>
        <th scope="col">Lower 95%</th><th scope="col">Upper 95%</th></tr>
    </thead>
    <tbody><xsl:apply-templates select="s:ParameterStats"/></tbody>
  </table>
</xsl:template>

<xsl:template match="s:ParameterStats">
  <tr>
    <th scope="row"><xsl:value-of select="@paramName"/></th>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@estimate"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@stdError"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@zTest"/></xsl:call-template>
    <xsl:call-template name="significance"><xsl:with-param name="x" select="@sig"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@expEstimate"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@expCILower"/></xsl:call-template>
    <xsl:call-template name="cell"><xsl:with-param name="x" select="@expCIUpper"/></xsl:call-template>
  </tr>
</xsl:template>

<xsl:template match="s:ModelTestStats">
  <table>
    <caption>What the deviance grows by without the input</caption>
    <thead>
      <tr><th scope="col">Input</th><th scope="col">df</th><th scope="col">Likelihood ratio</th>
        <th scope="col">Significance</th></tr>
    </thead>
    <tbody>
      <xsl:for-each select="s:ChiTest">
        <tr>
          <th scope="row"><xsl:value-of select="@fieldName"/></th>
          <td><xsl:value-of select="@df1"/></td>
          <xsl:call-template name="cell"><xsl:with-param name="x" select="@chiSquare"/></xsl:call-template>
          <xsl:call-template name="significance"><xsl:with-param name="x" select="@sig"/></xsl:call-template>
        </tr>
      </xsl:for-each>
    </tbody>
  </table>
</xsl:template>

<!-- Cases by category, a row each, and as they are classified. -->
<xsl:template match="s:Matrix[@kind = 'any']">
  <xsl:variable name="labels" select="s:MatrixLabels/s:RowColLabels[1]/s:Label"/>
  <h3>Classification</h3>
  <table>
    <caption>Classified by a probability above
      <xsl:value-of select="../s:TrainingSummary/s:Statistic[@name='cutoff']/@value"/></caption>
    <thead>
      <tr>
        <td/>
        <xsl:for-each select="$labels">
          <th scope="col">as <xsl:call-template name="short"><xsl:with-param name="text" select="."/></xsl:call-template></th>
        </xsl:for-each>
        <th scope="col">right</th>
      </tr>
    </thead>
    <tbody>
      <xsl:for-each select="s:Array">
        <xsl:variable name="row" select="position()"/>
        <xsl:variable name="asEvent" select="substring-before(., ' ')"/>
        <xsl:variable name="asOther" select="substring-after(., ' ')"/>
        <xsl:variable name="right" select="$asEvent * ($row = 1) + $asOther * ($row = 2)"/>
        <tr>
          <th scope="row"><xsl:value-of select="$labels[$row]"/></th>
          <td><xsl:value-of select="$asEvent"/></td>
          <td><xsl:value-of select="$asOther"/></td>
          <td><xsl:value-of select="format-number($right div ($asEvent + $asOther), '0.0%')"/></td>
        </tr>
      </xsl:for-each>
    </tbody>
  </table>
</xsl:template>

<!-- ==== Charts ================================================================================ -->

<!-- A square from 0 to `top` on both axes, with its diagonal. -->
<xsl:template name="square">
  <xsl:param name="top" select="1"/>
  <xsl:param name="x"/>
  <xsl:param name="y"/>
  <path class="axis" fill="none" d="M105,10V270M170,10V270M235,10V270M40,75H300M40,140H300M40,205H300"/>
  <rect class="frame" x="40" y="10" width="260" height="260"/>
  <line class="guide" stroke-dasharray="4 3" x1="40" x2="300" y1="270" y2="10"/>
  <text x="36" y="18" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$top"/></xsl:call-template></text>
  <text x="36" y="144" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$top div 2"/></xsl:call-template></text>
  <text x="36" y="270" text-anchor="end">0</text>
  <text x="40" y="284" text-anchor="middle">0</text>
  <text x="170" y="284" text-anchor="middle"><xsl:call-template name="plain"><xsl:with-param name="x" select="$top div 2"/></xsl:call-template></text>
  <text x="300" y="284" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$top"/></xsl:call-template></text>
  <text class="name" x="170" y="299" text-anchor="middle"><xsl:value-of select="$x"/></text>
  <text class="name" transform="translate(-4 140) rotate(-90)" text-anchor="middle"><xsl:value-of select="$y"/></text>
</xsl:template>

<xsl:template match="s:BivariateData[@description = 'ROC curve']">
  <xsl:variable name="statistics" select="../s:TrainingSummary/s:Statistic"/>
  <xsl:variable name="line">
    <xsl:call-template name="line">
      <xsl:with-param name="x" select="s:Coordinates[1]/s:Array"/>
      <xsl:with-param name="y" select="s:Coordinates[2]/s:Array"/>
    </xsl:call-template>
  </xsl:variable>
  <xsl:variable name="ofEvents" select="../s:Matrix[@kind = 'any']/s:Array[1]"/>
  <xsl:variable name="ofOthers" select="../s:Matrix[@kind = 'any']/s:Array[2]"/>
  <xsl:variable name="hits" select="substring-before($ofEvents, ' ')"/>
  <xsl:variable name="false" select="substring-before($ofOthers, ' ')"/>
  <xsl:variable name="at" select="$statistics[@name='cutoff']/@value"/>
  <div class="card">
    <h3>ROC curve</h3>
    <svg viewBox="-14 0 324 305" role="img" aria-label="ROC curve">
      <xsl:call-template name="square">
        <xsl:with-param name="x">share of the other cases, as events</xsl:with-param>
        <xsl:with-param name="y">share of the events, as events</xsl:with-param>
      </xsl:call-template>
      <path class="bar" fill-opacity="0.12" d="M{$line}L300,270Z"/>
      <path class="interval" fill="none" d="M{$line}"/>
      <circle class="cut" r="4.5" cx="{40 + 260 * $false div ($false + substring-after($ofOthers, ' '))}"
              cy="{270 - 260 * $hits div ($hits + substring-after($ofEvents, ' '))}">
        <title>cut-off <xsl:value-of select="$at"/></title>
      </circle>
    </svg>
    <p>
      area <xsl:call-template name="figure">
        <xsl:with-param name="x" select="$statistics[@name='area']/@value"/></xsl:call-template>
      <xsl:if test="$statistics[@name='areaBinning']/@value &gt; 0">
        ± <xsl:value-of select="format-number($statistics[@name='areaBinning']/@value, '0.######')"/>
        by the bins</xsl:if>
      <xsl:text> · the dot: cut-off </xsl:text><xsl:value-of select="$at"/>
    </p>
  </div>
</xsl:template>

<!-- The points of a line in the square, the first as M has it. -->
<xsl:template name="line">
  <xsl:param name="x"/>
  <xsl:param name="y"/>
  <xsl:value-of select="concat(format-number(40 + 260 * substring-before(concat($x, ' '), ' '), '0.##'), ',',
                               format-number(270 - 260 * substring-before(concat($y, ' '), ' '), '0.##'))"/>
  <xsl:if test="contains($x, ' ')">
    <xsl:text>L</xsl:text>
    <xsl:call-template name="line">
      <xsl:with-param name="x" select="substring-after($x, ' ')"/>
      <xsl:with-param name="y" select="substring-after($y, ' ')"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<xsl:template match="s:BivariateData[@description = 'calibration']">
  <xsl:variable name="x1" select="s:Statistic[@name='xMaximum']/@value"/>
  <xsl:variable name="y1" select="s:Statistic[@name='yMaximum']/@value"/>
  <xsl:variable name="most" select="$x1 * ($x1 &gt;= $y1) + $y1 * ($x1 &lt; $y1)"/>
  <!-- The axis of rare events ends with them, where a number of two digits does. -->
  <xsl:variable name="top">
    <xsl:choose>
      <xsl:when test="$most &gt; 0.5">1</xsl:when>
      <xsl:when test="$most &gt; 0.05"><xsl:value-of select="ceiling($most * 20) div 20"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="ceiling($most * 1000) div 1000"/></xsl:otherwise>
    </xsl:choose>
  </xsl:variable>
  <div class="card">
    <h3>Calibration</h3>
    <svg viewBox="-14 0 324 305" role="img" aria-label="calibration">
      <xsl:call-template name="square">
        <xsl:with-param name="top" select="$top"/>
        <xsl:with-param name="x">mean probability</xsl:with-param>
        <xsl:with-param name="y">share of events</xsl:with-param>
      </xsl:call-template>
      <xsl:call-template name="points">
        <xsl:with-param name="x" select="s:Coordinates[1]/s:Array"/>
        <xsl:with-param name="y" select="s:Coordinates[2]/s:Array"/>
        <xsl:with-param name="n" select="s:Coordinates[3]/s:Array"/>
        <xsl:with-param name="x0" select="0"/>
        <xsl:with-param name="y0" select="0"/>
        <xsl:with-param name="xs" select="260 div $top"/>
        <xsl:with-param name="ys" select="260 div $top"/>
        <xsl:with-param name="most" select="s:Statistic[@name='mostCases']/@value"/>
        <xsl:with-param name="left" select="40"/>
        <xsl:with-param name="bottom" select="270"/>
      </xsl:call-template>
    </svg>
    <p>groups of a twentieth of the cases by their probability, ten cases at least</p>
  </div>
</xsl:template>
</xsl:stylesheet>
