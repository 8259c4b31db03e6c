<article class="teaser"><h2><a href="{teaser_url}">{htmlspecialchars teaser_title}</a></h2><p>{htmlspecialchars teaser_text}</p></article>
